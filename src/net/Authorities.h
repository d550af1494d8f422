// The certificates of the authorities that this machine trusts, read without holding up the event
// loop: libcurl would read all of them in one go at the first encrypted connection.
#pragma once

#include "base/OneShot.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QTimer>

#include <memory>
#include <vector>

namespace velmora {

/// Where certificates stand; native paths.
struct AuthorityPlaces
{
    QByteArray file;   // with all of them, one after the other; empty for none
    QByteArray folder; // with one file each, named by its hash; empty for none
};

/// The places that libcurl was made for.
[[nodiscard]] AuthorityPlaces usualAuthorityPlaces();

/// One for all transfers that encrypt; outlives them.
class Authorities : public QObject
{
public:
    explicit Authorities(AuthorityPlaces places = usualAuthorityPlaces());
    Q_DISABLE_COPY_MOVE(Authorities)
    ~Authorities() override;

    /// Ends once the certificates are read: at once when they were, unless the file has changed
    /// since. Events are let through every few milliseconds.
    QCoro::Task<> load();

    [[nodiscard]] bool isLoaded() const { return store_ != nullptr; }

    /// Lets a transfer (easy handle) trust these. One that comes to encrypt before they are loaded,
    /// since a server has sent it on, ends with CURLE_ABORTED_BY_CALLBACK: it is to be run again
    /// behind load(). Where libcurl encrypts with something else than OpenSSL, it stays with its
    /// own way.
    void applyTo(void *easy);

private:
    struct FileStamp;
    struct Reading;

    struct FreeStore
    {
        void operator()(void *store) const;
    };

    using Store = std::unique_ptr<void, FreeStore>;

    void begin();
    void readSome();
    void finish();

    AuthorityPlaces places_;
    std::unique_ptr<FileStamp> stamp_; // of the file that was read
    std::unique_ptr<Reading> reading_; // while it lasts
    Store store_;
    QTimer turns_;
    std::vector<OneShot<bool> *> waiting_;
};

} // namespace velmora
