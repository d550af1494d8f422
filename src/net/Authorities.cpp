#include "net/Authorities.h"

#include "net/Curl.h"

#include <QElapsedTimer>
#include <QFile>

#include <new>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kSliceMs = 3;

X509_STORE *storeOf(void *store)
{
    return static_cast<X509_STORE *>(store);
}

// Skips anything that is not a certificate; false when the file holds no more.
bool addNext(BIO *file, X509_STORE *store)
{
    if (X509 *const certificate = PEM_read_bio_X509_AUX(file, nullptr, nullptr, nullptr)) {
        X509_STORE_add_cert(store, certificate);
        X509_free(certificate);
        return true;
    }
    const bool isEnd = ERR_GET_REASON(ERR_peek_last_error()) == PEM_R_NO_START_LINE;
    ERR_clear_error();
    return !isEnd;
}

AuthorityPlaces usualPlaces()
{
    const curl_version_info_data *const built = curl().versionInfo(CURLVERSION_NOW);
    return {built->cainfo, built->capath};
}

} // namespace

struct Authorities::Reading
{
    struct Close
    {
        void operator()(BIO *open) const { BIO_free(open); }
    };

    std::optional<FileStamp> stamp;   // none for a missing one
    std::unique_ptr<BIO, Close> file; // none if it cannot be read
    Store store;
};

void Authorities::FreeStore::operator()(void *store) const
{
    X509_STORE_free(storeOf(store));
}

Authorities::Authorities(std::optional<AuthorityPlaces> places)
    : places_(std::move(places))
{
    connect(&turns_, &QTimer::timeout, this, &Authorities::readSome);
}

Authorities::~Authorities() = default;

QCoro::Task<> Authorities::load()
{
    const AuthorityPlaces &places = places_ ? *places_ : places_.emplace(usualPlaces());
    if (isLoaded() && stamp_ == fileStamp(QFile::decodeName(places.file))) {
        co_return;
    }
    begin(places);
    OneShot<bool> read;
    waiting_.push_back(&read);
    const bool done = co_await read;
    Q_UNUSED(done);
}

void Authorities::begin(const AuthorityPlaces &places)
{
    if (reading_) {
        return;
    }
    auto reading = std::make_unique<Reading>();
    reading->stamp = fileStamp(QFile::decodeName(places.file));
    reading->file.reset(BIO_new_file(places.file.constData(), "r"));
    reading->store.reset(X509_STORE_new());
    X509_STORE *const store = storeOf(reading->store.get());
    if (store == nullptr) {
        throw std::bad_alloc();
    }
    X509_STORE_set_flags(store, X509_V_FLAG_TRUSTED_FIRST | X509_V_FLAG_PARTIAL_CHAIN);
    if (!places.folder.isEmpty()) {
        X509_STORE_load_path(store, places.folder.constData());
    }
    ERR_clear_error();
    reading_ = std::move(reading);
    turns_.start(0);
}

void Authorities::readSome()
{
    QElapsedTimer slice;
    slice.start();
    BIO *const file = reading_->file.get();
    while (file != nullptr && addNext(file, storeOf(reading_->store.get()))) {
        if (slice.elapsed() >= kSliceMs) {
            return;
        }
    }
    finish();
}

void Authorities::finish()
{
    turns_.stop();
    store_ = std::move(reading_->store);
    stamp_ = reading_->stamp;
    reading_.reset();
    for (OneShot<bool> *const waiter : std::exchange(waiting_, {})) {
        waiter->set(true);
    }
}

void Authorities::applyTo(void *easy)
{
    const curl_ssl_ctx_callback use = [](CURL *, void *context, void *user) {
        const auto *const self = static_cast<const Authorities *>(user);
        if (!self->isLoaded()) {
            return CURLE_ABORTED_BY_CALLBACK;
        }
        SSL_CTX_set1_cert_store(static_cast<SSL_CTX *>(context), storeOf(self->store_.get()));
        return CURLE_OK;
    };
    // refused by a libcurl that uses another library for TLS, which then reads its own store
    if (curl().easySetopt(easy, CURLOPT_SSL_CTX_FUNCTION, use) == CURLE_OK) {
        setOption(easy, CURLOPT_SSL_CTX_DATA, this);
        setOption(easy, CURLOPT_CAINFO, nullptr);
        setOption(easy, CURLOPT_CAPATH, nullptr);
    }
}

} // namespace velmora
