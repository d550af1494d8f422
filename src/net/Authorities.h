// Reads the certificates of the authorities that this machine trusts without holding up the event
// loop: libcurl would read them all in one go at the first encrypted connection.
#pragma once

#include "base/FileStamp.h"
#include "base/OneShot.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// Where certificates are kept; native paths.
struct AuthorityPlaces
{
    QByteArray file;   // holds all of them, one after another; empty for none
    QByteArray folder; // holds one file for each, named by its hash; empty for none
};

/// Shared by all transfers that encrypt; outlives them.
class Authorities : public QObject
{
public:
    /// places: none for those that libcurl was built with.
    explicit Authorities(std::optional<AuthorityPlaces> places);
    Q_DISABLE_COPY_MOVE(Authorities)
    ~Authorities() override;

    /// Returns once the certificates are read: at once if they have been, unless the file has
    /// changed since. Events are handled every few milliseconds. Throws NoCurl.
    QCoro::Task<> load();

    [[nodiscard]] bool isLoaded() const { return store_ != nullptr; }

    /// Makes a transfer (easy handle) trust these. If it has to encrypt before they are loaded,
    /// because a server redirected it, it ends with CURLE_ABORTED_BY_CALLBACK and must be run again
    /// after load(). Where libcurl uses something other than OpenSSL, it loads certificates its own
    /// way.
    void applyTo(void *easy);

private:
    struct Reading;

    struct FreeStore
    {
        void operator()(void *store) const;
    };

    using Store = std::unique_ptr<void, FreeStore>;

    void begin(const AuthorityPlaces &places);
    void readSome();
    void finish();

    std::optional<AuthorityPlaces> places_;
    std::optional<FileStamp> stamp_;   // of the file as read; none for a missing one
    std::unique_ptr<Reading> reading_; // while loading
    Store store_;
    QTimer turns_;
    std::vector<OneShot<bool> *> waiting_;
};

} // namespace velmora
