// libcurl's multi interface says which sockets to watch and when to wake it; a socket set and one
// timer of the event loop do so, for a few milliseconds a turn. It is never called from its own
// callbacks.
#include "net/TransferLoop.h"

#include "base/OneShot.h"
#include "net/Curl.h"
#include "net/SocketSet.h"

#include <QObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using Time = std::chrono::steady_clock::time_point;
using End = std::optional<int>; // the code, or nothing when stopped

constexpr std::chrono::milliseconds kTurn{3};
constexpr std::chrono::milliseconds kPart{2}; // for one transfer, which may start late in a turn
constexpr std::chrono::milliseconds kLongestWait{3'600'000};
constexpr std::chrono::milliseconds kSpareTime{2000};
constexpr int kDescriptorsOfSpare = 2; // for waking libcurl

struct MultiCleanUp
{
    void operator()(CURLM *multi) const { curl().multiCleanup(multi); }
};

using MultiHandle = std::unique_ptr<CURLM, MultiCleanUp>;

int selectMask(SocketEvents events)
{
    return (events.read ? CURL_CSELECT_IN : 0) | (events.write ? CURL_CSELECT_OUT : 0) |
           (events.error ? CURL_CSELECT_ERR : 0);
}

} // namespace

// Each transfer has its own multi handle: with a shared one, libcurl would serve every transfer
// that is due within a single call, reading all there is from each.
struct TransferLoop::Transfer
{
    Transfers *owner = nullptr;
    CURL *easy = nullptr;
    MultiHandle multi;
    AtEnd atEnd = AtEnd::Close;
    OneShot<End> *waiter = nullptr; // none once it is connected
    Time due = Time::max();
    Time pausedSince = Time::max();

    [[nodiscard]] Time nextTurn() const { return std::min(due, pausedSince); }

    Transfer() = default;
    Q_DISABLE_COPY_MOVE(Transfer)

    ~Transfer()
    {
        if (multi) {
            curl().multiRemoveHandle(multi.get(), easy);
        }
    }
};

class TransferLoop::Transfers : public QObject
{
public:
    Transfers()
    {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, &Transfers::serveDue);
        connect(&sockets_, &SocketSet::ready, this, &Transfers::serveSocket);
        spareTimer_.setSingleShot(true);
        connect(&spareTimer_, &QTimer::timeout, this, [this] { spares_.clear(); });
    }

    Q_DISABLE_COPY_MOVE(Transfers)

    ~Transfers() override
    {
        while (!live_.empty()) {
            finish(live_.begin()->first, std::nullopt);
        }
    }

    void begin(CURL *easy, AtEnd atEnd, OneShot<End> &end)
    {
        const auto added = live_.insert_or_assign(easy, std::make_unique<Transfer>());
        Transfer &transfer = *added.first->second;
        transfer.owner = this;
        transfer.easy = easy;
        transfer.atEnd = atEnd;
        transfer.waiter = &end;
        transfer.multi = takeMulti(); // without memory for it, nothing can be added
        CURLM *const multi = transfer.multi.get();
        curl().multiSetopt(multi, CURLMOPT_SOCKETFUNCTION, &Transfers::onSocket);
        curl().multiSetopt(multi, CURLMOPT_SOCKETDATA, &transfer);
        curl().multiSetopt(multi, CURLMOPT_TIMERFUNCTION, &Transfers::onTimer);
        curl().multiSetopt(multi, CURLMOPT_TIMERDATA, &transfer);
        if (curl().multiAddHandle(multi, easy) != CURLM_OK) {
            finish(easy, CURLE_FAILED_INIT);
        }
    }

    // Does nothing when the transfer has ended already.
    void finish(CURL *easy, End end)
    {
        const auto found = live_.find(easy);
        if (found == live_.end()) {
            return;
        }
        OneShot<End> *const waiter = std::exchange(found->second->waiter, nullptr);
        if (end != End{CURLE_OK}) {
            disconnect(easy);
        } else if (found->second->atEnd == AtEnd::Close) {
            keepSpare(*found->second);
            disconnect(easy);
        }
        if (waiter != nullptr) {
            waiter->set(end);
        }
    }

    [[nodiscard]] int spareDescriptors() const
    {
        return static_cast<int>(spares_.size()) * kDescriptorsOfSpare;
    }

    bool pausesNow()
    {
        const Time now = std::chrono::steady_clock::now();
        const bool isLong = acting_ != nullptr && now - actBegan_ >= kPart;
        if (isLong) {
            acting_->pausedSince = now;
        }
        return isLong;
    }

    void disconnect(CURL *easy)
    {
        live_.erase(easy);
        std::erase_if(bySocket_, [this, easy](const auto &entry) {
            if (entry.second == easy) {
                sockets_.forget(entry.first);
            }
            return entry.second == easy;
        });
    }

private:
    void keepSpare(Transfer &transfer)
    {
        CURLM *const multi = transfer.multi.get();
        curl().multiRemoveHandle(multi, transfer.easy);
        curl().multiSetopt(multi, CURLMOPT_SOCKETFUNCTION, nullptr);
        curl().multiSetopt(multi, CURLMOPT_TIMERFUNCTION, nullptr);
        try {
            spares_.push_back(std::move(transfer.multi));
        } catch (const std::bad_alloc &) {
            return; // it goes with its transfer
        }
        spareTimer_.start(kSpareTime);
    }

    MultiHandle takeMulti()
    {
        if (spares_.empty()) {
            return MultiHandle(curl().multiInit());
        }
        MultiHandle multi = std::move(spares_.back());
        spares_.pop_back();
        return multi;
    }

    static int onTimer(CURLM *, long milliseconds, void *user)
    {
        auto *const transfer = static_cast<Transfer *>(user);
        if (milliseconds < 0) {
            transfer->due = Time::max();
        } else {
            const Time now = std::chrono::steady_clock::now();
            transfer->due = now + std::chrono::milliseconds{milliseconds};
            transfer->owner->wakeBy(transfer->due, now);
        }
        return 0;
    }

    // libcurl moves its next deadline with every step of every transfer. A timer already set for an
    // earlier moment is left alone, and checks the deadlines again when it fires.
    void wakeBy(Time due, Time now)
    {
        if (!timer_.isActive() || wakesAt_ > due) {
            wakesAt_ = due;
            const auto wait = std::chrono::ceil<std::chrono::milliseconds>(due - now);
            timer_.start(std::clamp(wait, std::chrono::milliseconds{0}, kLongestWait));
        }
    }

    // Those that have waited longest come first; what there is no time for is left to the next
    // turn.
    void serveDue()
    {
        const Time began = std::chrono::steady_clock::now();
        for (const auto &[due, easy] : dueTransfers(began)) {
            if (std::chrono::steady_clock::now() - began >= kTurn) {
                break;
            }
            const auto found = live_.find(easy);
            if (found != live_.end() && found->second->nextTurn() == due) {
                serve(*found->second);
            }
        }
        wakeForNext();
    }

    void serve(Transfer &transfer)
    {
        if (transfer.pausedSince != Time::max()) {
            goOn(transfer);
        } else {
            transfer.due = Time::max();
            act(transfer, CURL_SOCKET_TIMEOUT, 0);
        }
    }

    // Data received before the pause goes to its callback first, which may pause it again.
    void goOn(Transfer &transfer)
    {
        CURL *const easy = transfer.easy;
        transfer.pausedSince = Time::max();
        beginPart(transfer);
        const CURLcode code = curl().easyPause(easy, CURLPAUSE_CONT);
        acting_ = nullptr;
        if (code != CURLE_OK) {
            finish(easy, code); // libcurl would report it to no one else
        }
    }

    void beginPart(Transfer &transfer)
    {
        acting_ = &transfer;
        actBegan_ = std::chrono::steady_clock::now();
    }

    [[nodiscard]] std::vector<std::pair<Time, CURL *>> dueTransfers(Time now) const
    {
        std::vector<std::pair<Time, CURL *>> due;
        for (const auto &[easy, transfer] : live_) {
            if (transfer->nextTurn() <= now) {
                due.emplace_back(transfer->nextTurn(), easy);
            }
        }
        std::ranges::sort(due);
        return due;
    }

    void wakeForNext()
    {
        Time next = Time::max();
        for (const auto &[easy, transfer] : live_) {
            next = std::min(next, transfer->nextTurn());
        }
        if (next != Time::max()) {
            wakeBy(next, std::chrono::steady_clock::now());
        }
    }

    static int onSocket(CURL *, curl_socket_t socket, int what, void *user, void *)
    {
        const auto *const transfer = static_cast<Transfer *>(user);
        transfer->owner->watch(*transfer, socket, what);
        return 0;
    }

    void watch(const Transfer &transfer, curl_socket_t socket, int what)
    {
        if (what == CURL_POLL_REMOVE) {
            sockets_.forget(socket);
            bySocket_.erase(socket);
        } else {
            sockets_.watch(socket, {what != CURL_POLL_OUT, what != CURL_POLL_IN, false});
            bySocket_.insert_or_assign(socket, transfer.easy);
        }
    }

    void serveSocket(int socket, SocketEvents events)
    {
        const auto owner = bySocket_.find(socket);
        const auto found = owner == bySocket_.end() ? live_.end() : live_.find(owner->second);
        if (found != live_.end()) {
            act(*found->second, socket, selectMask(events));
        }
    }

    void act(Transfer &transfer, curl_socket_t socket, int mask)
    {
        CURL *const easy = transfer.easy;
        int running = 0;
        beginPart(transfer);
        const CURLMcode code =
            curl().multiSocketAction(transfer.multi.get(), socket, mask, &running);
        acting_ = nullptr;
        if (code == CURLM_OUT_OF_MEMORY) {
            finish(easy, CURLE_OUT_OF_MEMORY); // no one would hear of its end any more
            return;
        }
        if (transfer.pausedSince != Time::max()) {
            wakeBy(transfer.pausedSince, transfer.pausedSince);
        }
        int left = 0;
        const CURLMsg *const message = curl().multiInfoRead(transfer.multi.get(), &left);
        if (message != nullptr && message->msg == CURLMSG_DONE) {
            finish(easy, message->data.result);
        }
    }

    // Of transfers that succeeded, for the next ones, since making and ending one takes a seventh
    // of a transfer's time. Where no transfer ends for a while, they go.
    std::vector<MultiHandle> spares_;
    QTimer spareTimer_;
    QTimer timer_;
    Time wakesAt_;               // while the timer runs
    Transfer *acting_ = nullptr; // while libcurl works on it
    Time actBegan_;
    SocketSet sockets_;
    std::unordered_map<int, CURL *> bySocket_;
    std::unordered_map<CURL *, std::unique_ptr<Transfer>> live_; // destroyed first
};

void EasyCleanUp::operator()(void *easy) const
{
    curl().easyCleanup(easy);
}

TransferLoop::TransferLoop()
    : transfers_(std::make_unique<Transfers>())
{
}

TransferLoop::~TransferLoop() = default;

EasyHandle TransferLoop::newTransfer()
{
    EasyHandle easy(curl().easyInit());
    if (easy == nullptr) {
        throw std::bad_alloc();
    }
    setOption(easy.get(), CURLOPT_NOSIGNAL, 1L);
    setOption(easy.get(), CURLOPT_DNS_CACHE_TIMEOUT, 0L); // a camera's address may have changed
    setOption(easy.get(), CURLOPT_QUICK_EXIT, 1L); // or a cancel waits for a slow name lookup
    return easy;
}

QCoro::Task<std::optional<int>> TransferLoop::run(void *easy, std::stop_token stop)
{
    return runUntil(AtEnd::Close, easy, std::move(stop));
}

QCoro::Task<std::optional<int>> TransferLoop::connect(void *easy, std::stop_token stop)
{
    return runUntil(AtEnd::StayConnected, easy, std::move(stop));
}

QCoro::Task<std::optional<int>> TransferLoop::runUntil(AtEnd atEnd, void *easy,
                                                       std::stop_token stop)
{
    OneShot<End> end;
    Transfers &transfers = *transfers_;
    transfers.begin(easy, atEnd, end);
    const std::stop_callback onStop(std::move(stop),
                                    [&transfers, easy] { transfers.finish(easy, std::nullopt); });
    const End code = co_await end;
    co_return code;
}

bool TransferLoop::pausesNow()
{
    return transfers_->pausesNow();
}

int TransferLoop::spareDescriptors() const
{
    return transfers_->spareDescriptors();
}

void TransferLoop::disconnect(void *easy)
{
    transfers_->disconnect(easy);
}

} // namespace velmora
