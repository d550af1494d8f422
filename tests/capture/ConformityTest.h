// Conformity passes over camera folders in a temporary tree, on a clock on which work takes time.
#pragma once

#include "CaptureTest.h"
#include "capture/Conformity.h"
#include "support/NativeFiles.h"
#include "support/ScopedEnv.h"

#include <QFile>

#include <ctime>
#include <filesystem>
#include <optional>

namespace velmora::test {

inline constexpr CameraAddress kConformed{0, 0};

/// 7 March 2006, 14:05:09 GMT.
inline constexpr std::time_t kModified = 1141740309;
inline constexpr std::time_t kHour = 3600;
inline constexpr std::time_t kDay = 24 * kHour;

/// The process is in the zone GMT, and camera 0:0 has an address.
class ConformityTest : public CaptureTest
{
protected:
    ConformityTest()
        : CaptureTest(EngineWork::TakesTime)
    {
        goTo("UTC0");
        add(kConformed);
        house_.tree.makeFolder(house_.folder(kConformed));
        folder_ = folder(kConformed);
        QObject::connect(&conformity_, &Conformity::statusChanged, &recorder_,
                         [this](const QString &text) { texts_.append(text); });
        QObject::connect(&conformity_, &Conformity::began, &recorder_, [this] { ++began_; });
        QObject::connect(&conformity_, &Conformity::ended, &recorder_, [this] { ++ended_; });
        busy_.takeYields();
    }

    ~ConformityTest() override
    {
        zone_.reset();
        ::tzset();
        std::filesystem::remove_all(folder_.toStdString()); // Qt finds no names that are not text
    }

    void goTo(const QByteArray &zone)
    {
        zone_.emplace("TZ", zone);
        ::tzset();
    }

    /// Native path of a camera's folder.
    [[nodiscard]] QByteArray folder(CameraAddress camera) const
    {
        return QFile::encodeName(house_.tree.path(house_.folder(camera)));
    }

    [[nodiscard]] QByteArray path(const QByteArray &name) const { return folder_ + '/' + name; }

    /// The path as the browser knows it.
    [[nodiscard]] QString shownPath(const QByteArray &name) const
    {
        return QFile::decodeName(path(name));
    }

    void put(const QByteArray &name, std::time_t modified = kModified) const
    {
        writeNative(path(name), "picture of " + name, modified);
    }

    [[nodiscard]] QByteArrayList names() const { return nativeNames(folder_); }

    void begin() { house_.scope.launch(conformity_.run()); }

    void run()
    {
        begin();
        house_.finish();
    }

    Conformity &conformity_ = house_.engine.conformity();
    QStringList texts_;
    int began_ = 0;
    int ended_ = 0;

    QByteArray folder_; // native path of the camera's folder
    QObject recorder_;

private:
    std::optional<ScopedEnv> zone_;
};

} // namespace velmora::test
