#include "playback/media_pool.h"

#include "playback/recorder_link.h"
#include "playback/timer_clients.h"

#include <cmath>
#include <new>

namespace vd::playback {

std::atomic<uint16_t> gTimerClients{0};

namespace {

MediaPool* gPool = nullptr;

}  // namespace

RecorderLink& Recorder() {
    static RecorderLink link;
    return link;
}

int16_t ClampedVolumeWord(float volume) {
    if (volume < -128.0f) return -32768;
    if (volume >= 127.0f) return 32512;
    return int16_t(std::trunc(volume * 256.0f));
}

int16_t WrappedVolumeWord(float volume) {
    // Truncated to 32 bits and then cut to 16: 200 gives 51200, kept as -14336.
    const double product = std::trunc(double(volume) * 256.0);
    if (!(product > -2147483648.0 && product < 2147483648.0)) return 0;
    return int16_t(uint16_t(uint32_t(int32_t(product))));
}

audio::Fixed SaturatedRate(float rate) {
    const double product = double(rate) * 65536.0;
    if (product >= 2147483648.0) return 0x7FFFFFFF;
    if (!(product > -2147483649.0)) return audio::Fixed(-2147483647 - 1);
    return audio::Fixed(std::trunc(product));
}

MediaPool* MediaPool::Instance() {
    if (!gPool) {
        gTimerClients.store(0);
        gPool = new (std::nothrow) MediaPool();
    }
    return gPool;
}

void MediaPool::Destroy() {
    if (!gPool) return;
    gPool->StopAll();
    delete gPool;
    gPool = nullptr;
    gTimerClients.store(0);
}

// The timer is the last member, so it goes first: its threads are joined (a tick may be waiting
// for the lock, which is not held here) before the entries and the lock go.
MediaPool::~MediaPool() = default;

uint32_t MediaPool::IdOf(const Entry& entry) const {
    // The entry's address is its identity; ids are 32 bits, so the address is compared as the
    // caller could have kept it.
    return uint32_t(reinterpret_cast<uintptr_t>(&entry));
}

template <typename Visit>
void MediaPool::ForMatching(uint32_t id, Visit visit) {
    for (const auto& entry : entries_)
        if (id == 0 || IdOf(*entry) == id) visit(*entry->sound);
}

int32_t MediaPool::Add(std::unique_ptr<audio::PlayingSound> sound) {
    std::lock_guard lock(lock_);
    const float volume = GetVolume(0), rate = GetRate(0);
    auto entry = std::make_unique<Entry>();
    entry->sound = std::move(sound);
    audio::PlayingSound& s = *entry->sound;
    entries_.push_back(std::move(entry));
    s.SetVolume(WrappedVolumeWord(volume));
    s.SetPreferredRate(SaturatedRate(rate));
    s.SetBalance(defaultBalance_);
    s.Start();
    AcquireTimer(TimerClient::kPool);
    return 0;
}

void MediaPool::StopAll() {
    std::lock_guard lock(lock_);
    for (const auto& entry : entries_) entry->sound->Stop();
    entries_.clear();
}

int32_t MediaPool::TogglePause(uint32_t id) {
    std::lock_guard lock(lock_);
    ForMatching(id, [](audio::PlayingSound& s) {
        if (s.Rate() != 0) s.Stop();
        else s.Start();
    });
    return 0;
}

bool MediaPool::IsPlaying(uint32_t id) {
    std::lock_guard lock(lock_);
    for (const auto& entry : entries_)
        if ((id == 0 || IdOf(*entry) == id) && entry->sound->Rate() != 0) return true;
    return false;
}

int32_t MediaPool::SetVolume(uint32_t id, float volume) {
    std::lock_guard lock(lock_);
    if (id == 0) defaultVolume_ = volume;
    const int16_t word = ClampedVolumeWord(volume);
    ForMatching(id, [word](audio::PlayingSound& s) { s.SetVolume(word); });
    return 0;
}

int32_t MediaPool::SetRate(uint32_t id, float rate) {
    std::lock_guard lock(lock_);
    if (id == 0) defaultRate_ = rate;
    const audio::Fixed preferred = SaturatedRate(defaultRate_), current = SaturatedRate(rate);
    // A non-zero rate sets a paused sound going: changing the tempo resumes it.
    ForMatching(id, [&](audio::PlayingSound& s) {
        s.SetPreferredRate(preferred);
        s.SetRate(current);
    });
    return 0;
}

int32_t MediaPool::SetBalance(uint32_t id, float balance) {
    std::lock_guard lock(lock_);
    if (id == 0) defaultBalance_ = balance;
    ForMatching(id, [balance](audio::PlayingSound& s) { s.SetBalance(balance); });
    return 0;
}

float MediaPool::GetVolume(uint32_t id) {
    std::lock_guard lock(lock_);
    if (id == 0) return defaultVolume_;
    float volume = 0;
    ForMatching(id, [&](audio::PlayingSound& s) { volume = float(s.Volume()) / 256.0f; });
    return volume;
}

float MediaPool::GetRate(uint32_t id) {
    std::lock_guard lock(lock_);
    if (id == 0) return defaultRate_;
    float rate = 0;
    ForMatching(id, [&](audio::PlayingSound& s) {
        const float preferred = float(s.PreferredRate()) / 65536.0f, current = float(s.Rate()) / 65536.0f;
        rate = current != preferred && current != 0 ? current : preferred;  // a paused sound tells its tempo
    });
    return rate;
}

float MediaPool::GetBalance(uint32_t id) {
    std::lock_guard lock(lock_);
    if (id == 0) return defaultBalance_;
    float balance = 0;
    ForMatching(id, [&](audio::PlayingSound& s) { balance = s.Balance(); });
    return balance;
}

void MediaPool::AcquireTimer(TimerClient client) {
    // Under the lock, so that a tick letting the timer go and a call taking it cannot cross.
    std::lock_guard lock(lock_);
    const auto bit = uint16_t(client);
    if (gTimerClients.load() & bit) return;
    gTimerClients.fetch_or(bit);
    if (!(gTimerClients.load() & kTimerInstalled) && timer_.Install([this] { Tick(); }))
        gTimerClients.fetch_or(kTimerInstalled);
}

void MediaPool::ReleaseTimer(TimerClient client) {
    std::lock_guard lock(lock_);
    const auto bit = uint16_t(client);
    if (!(gTimerClients.load() & bit)) return;
    gTimerClients.fetch_and(uint16_t(~bit));
    const uint16_t others = (kPoolTimerClient | kRecorderTimerClient) & ~bit;
    const uint16_t now = gTimerClients.load();
    if (!(now & others) && (now & kTimerInstalled)) {
        timer_.Remove();
        gTimerClients.fetch_and(uint16_t(~kTimerInstalled));
    }
}

void MediaPool::Tick() {
    {
        std::lock_guard lock(lock_);
        if (entries_.empty()) {
            ReleaseTimer(TimerClient::kPool);
        } else {
            // Disposal first: a sound that has ended goes at the first tick that sees it done. The
            // output is served by its own threads, so there is no slice to hand out here.
            for (auto it = entries_.begin(); it != entries_.end();) {
                if ((*it)->sound->IsDone()) it = entries_.erase(it);
                else ++it;
            }
        }
    }
    if (const auto idleStep = Recorder().idleStep.load()) idleStep();
}

size_t MediaPool::EntryCount() {
    std::lock_guard lock(lock_);
    return entries_.size();
}

std::vector<uint32_t> MediaPool::EntryIds() {
    std::lock_guard lock(lock_);
    std::vector<uint32_t> ids;
    for (const auto& entry : entries_) ids.push_back(IdOf(*entry));
    return ids;
}

}  // namespace vd::playback
