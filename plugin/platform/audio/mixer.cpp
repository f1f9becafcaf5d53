#include "platform/audio/mixer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

namespace vd::audio {

const char* EventName(EventKind kind) {
    switch (kind) {
        case EventKind::kStart: return "start";
        case EventKind::kStop: return "stop";
        case EventKind::kRate: return "rate";
        case EventKind::kVolume: return "volume";
        case EventKind::kBalance: return "balance";
        case EventKind::kDone: return "done";
    }
    return "?";
}

bool Mixer::Add(Voice* voice) {
    for (size_t i = 0; i < kSlots; ++i) {
        Voice* empty = nullptr;
        if (slots_[i].compare_exchange_strong(empty, voice)) {
            size_t used = slotsInUse_.load();
            while (used < i + 1 && !slotsInUse_.compare_exchange_weak(used, i + 1)) {
            }
            return true;
        }
    }
    return false;
}

void Mixer::Remove(Voice* voice) {
    for (auto& slot : slots_) {
        Voice* expected = voice;
        if (slot.compare_exchange_strong(expected, nullptr)) break;
    }
    // Both sides use sequentially consistent operations: a Render that starts after this load of
    // an even epoch loads the emptied slot; one that was running (odd epoch) may still hold the
    // sound, so wait for it to leave.
    const uint64_t epoch = epoch_.load();
    if (epoch & 1)
        while (epoch_.load() == epoch) std::this_thread::sleep_for(std::chrono::microseconds(50));
}

namespace {

// Starts reading the sound from its beginning again: the callback stops touching the ring, the
// feeder restarts it and says so; until then the sound is parked (silent, position kept at 0).
void TakeRewind(Voice& voice) {
    const uint64_t request = voice.rewindRequest.load(std::memory_order_acquire);
    if (request != voice.rewindSeen) {
        voice.rewindSeen = request;
        voice.parked = true;
        voice.fraction = 0;
        voice.parkedFor.store(request, std::memory_order_release);
    }
    if (voice.parked && voice.rewoundFor.load(std::memory_order_acquire) == voice.rewindSeen) voice.parked = false;
}

bool IsDone(const Voice& voice) {
    return voice.doneFor.load(std::memory_order_relaxed) == int64_t(voice.rewindSeen);
}

}  // namespace

bool Mixer::Ready(Voice& voice, Fixed rate, size_t frames) const {
    if (rate == 0 || IsDone(voice)) return true;
    if (voice.parked) return false;
    if (voice.sourceOver.load(std::memory_order_acquire)) return true;
    const double needed = voice.fraction + double(frames) * rate / kFixedOne + 2;
    return double(voice.ring.Available()) >= std::min(needed, double(FrameRing::kFrames));
}

Mixer::Outcome Mixer::Render(float* out, size_t frames, bool waitForFrames, EventList* events) {
    epoch_.fetch_add(1);
    std::fill(out, out + 2 * frames, 0.0f);
    const size_t used = slotsInUse_.load();
    // The parameters are read once for the block (the rate before the check of the buffers, so
    // that the check and the rendering agree).
    std::array<Voice*, kSlots> voices;
    std::array<Fixed, kSlots> rates;
    for (size_t i = 0; i < used; ++i) {
        voices[i] = slots_[i].load();
        if (!voices[i]) continue;
        TakeRewind(*voices[i]);
        rates[i] = std::max(voices[i]->rate.load(std::memory_order_relaxed), 0);
    }
    if (waitForFrames)
        for (size_t i = 0; i < used; ++i)
            if (voices[i] && !Ready(*voices[i], rates[i], frames)) {
                epoch_.fetch_add(1);
                return Outcome::kNotReady;
            }

    bool audible = false;
    for (size_t i = 0; i < used; ++i) {
        Voice* voice = voices[i];
        if (lastSound_[i] && lastPlaying_[i] && (!voice || voice->number != lastSound_[i]) && events)
            events->Add({0, EventKind::kStop, lastSound_[i], 0});
        lastSound_[i] = voice ? voice->number : 0;
        lastPlaying_[i] = false;
        if (!voice) continue;

        const Fixed rate = rates[i];
        const int16_t volume = voice->volume.load(std::memory_order_relaxed);
        const float balance = voice->balance.load(std::memory_order_relaxed);
        if (rate != voice->appliedRate && events) {
            const EventKind kind = voice->appliedRate == 0 ? EventKind::kStart
                                   : rate == 0             ? EventKind::kStop
                                                           : EventKind::kRate;
            events->Add({0, kind, voice->number, double(rate) / kFixedOne});
        }
        if (volume != voice->appliedVolume && events) events->Add({0, EventKind::kVolume, voice->number, double(volume)});
        if (balance != voice->appliedBalance && events) events->Add({0, EventKind::kBalance, voice->number, balance});
        voice->appliedRate = rate;
        voice->appliedVolume = volume;
        voice->appliedBalance = balance;

        if (rate == 0 || IsDone(*voice)) continue;
        audible = true;
        if (!voice->parked) Mix(*voice, out, frames, events);
        lastPlaying_[i] = !IsDone(*voice);
    }
    epoch_.fetch_add(1);
    return audible ? Outcome::kAudible : Outcome::kSilent;
}

void Mixer::Mix(Voice& voice, float* out, size_t frames, EventList* events) {
    // Whether the source is over is read before the ring's fill, so that "over" means the fill
    // seen is final.
    const bool over = voice.sourceOver.load(std::memory_order_acquire);
    const uint64_t available = voice.ring.Available();
    const uint64_t base = voice.ring.ReadIndex();
    const double step = double(voice.appliedRate) / kFixedOne;
    const float gain = float(voice.appliedVolume) / 256.0f / 32768.0f;
    const float balance = voice.appliedBalance;
    const float left = gain * std::min(1.0f, 1.0f - balance);
    const float right = gain * std::min(1.0f, 1.0f + balance);

    double position = voice.fraction;
    size_t i = 0;
    bool ended = false;
    if (step == 1.0 && position == 0.0) {
        // Straight through at its own speed: no interpolation.
        const size_t n = size_t(std::min<uint64_t>(frames, available));
        for (; i < n; ++i) {
            const StereoFrame& frame = voice.ring.At(base + i);
            out[2 * i] += float(frame.left) * left;
            out[2 * i + 1] += float(frame.right) * right;
        }
        position = double(n);
        ended = over && n == available;
    } else {
        for (; i < frames; ++i) {
            const uint64_t index = uint64_t(position);
            const float t = float(position - double(index));
            if (index >= available) {
                ended = over;
                break;
            }
            const StereoFrame& a = voice.ring.At(base + index);
            float l = a.left, r = a.right;
            if (t > 0) {
                if (index + 1 < available) {
                    const StereoFrame& b = voice.ring.At(base + index + 1);
                    l += (float(b.left) - l) * t;
                    r += (float(b.right) - r) * t;
                } else if (over) {  // past the last frame lies silence
                    l *= 1 - t;
                    r *= 1 - t;
                } else {
                    break;  // the next frame is not decoded yet: wait for it
                }
            }
            out[2 * i] += l * left;
            out[2 * i + 1] += r * right;
            position += step;
        }
    }
    // The last frame played with the block's last frame: done from the next block on, so that no
    // block of silence follows it.
    if (!ended && over && uint64_t(position) >= available) {
        ended = true;
        i = frames;
    }
    const uint64_t consumed = std::min<uint64_t>(uint64_t(position), available);
    voice.ring.Consume(consumed);
    voice.fraction = position - double(consumed);
    if (ended) {
        voice.doneFor.store(int64_t(voice.rewindSeen), std::memory_order_release);
        if (events) events->Add({i, EventKind::kDone, voice.number, 0});
    }
}

}  // namespace vd::audio
