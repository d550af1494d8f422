// What the rules of the alarm's scan make of the browser's choice and list: which pictures it
// shows, one step after another. Kept as simple as the rules, and without any widget.
#pragma once

#include "tools/MotionAlarm.h"

#include <QString>

#include <functional>
#include <optional>
#include <utility>

namespace velmora::test {

class AlarmReference
{
public:
    /// The browser at this moment.
    struct Asks
    {
        std::function<int()> selected;
        std::function<QString(int position)> path; // of an image in the list; empty for none
        std::function<bool(const QString &path)> isPicture;
    };

    explicit AlarmReference(Asks asks)
        : asks_(std::move(asks))
    {
    }

    /// A click on the empty picture.
    void start()
    {
        if (!isScanning()) {
            step_ = 0;
            passes = 0;
        }
    }

    /// The window was closed.
    void stop() { step_.reset(); }

    [[nodiscard]] bool isScanning() const { return step_.has_value(); }

    /// A picture is set: the step that was due, and what the picture is then.
    void follow(AlarmPicture which)
    {
        if (!step_) {
            tell(QStringLiteral("a picture without a scan"));
            return;
        }
        const int step = (*step_)++;
        if (step < kBegin) {
            static const AlarmPicture order[] = {AlarmPicture::Ref, AlarmPicture::Var,
                                                 AlarmPicture::Vide};
            expect(which, order[step]);
            shown(which).clear();
            return;
        }
        const int inPass = (step - kBegin) % kSteps;
        expect(which, inPass < 2 ? AlarmPicture::Var : AlarmPicture::Ref);
        if (inPass == 0) {
            selected_ = asks_.selected();
        }
        const int position = selected_ - 2 * passes - (inPass == 3 ? 1 : 0);
        shown(which) = inPass % 2 == 0 ? QString() : loaded(position);
    }

    /// The pair was compared.
    void compare()
    {
        if (!step_ || (*step_ - kBegin) != kSteps * (passes + 1)) {
            tell(QStringLiteral("a pair is compared before both are loaded"));
        }
        if (++passes == kPasses) {
            step_.reset();
        }
    }

    /// The pictures are loaded again for another size.
    void reload()
    {
        for (QString *const path : {&ref, &var}) {
            *path = asks_.isPicture(*path) ? *path : QString();
        }
    }

    QString ref; // path; empty for no picture
    QString var;
    QString vide;
    int passes = 0;
    QString error; // the first

private:
    static constexpr int kBegin = 3; // steps
    static constexpr int kSteps = 4; // of a pass
    static constexpr int kPasses = 11;

    QString &shown(AlarmPicture which)
    {
        return which == AlarmPicture::Ref ? ref : which == AlarmPicture::Var ? var : vide;
    }

    void tell(const QString &what) { error = error.isEmpty() ? what : error; }

    void expect(AlarmPicture which, AlarmPicture meant)
    {
        if (which != meant) {
            tell(QStringLiteral("another picture is set at step %1").arg(*step_ - 1));
        }
    }

    [[nodiscard]] QString loaded(int position) const
    {
        const QString path = asks_.path(position);
        return asks_.isPicture(path) ? path : QString();
    }

    Asks asks_;
    std::optional<int> step_; // the next one of the scan
    int selected_ = -1;       // in this pass
};

} // namespace velmora::test
