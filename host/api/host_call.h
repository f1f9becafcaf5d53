// Every C entry point of the host API runs its body through hostCall: nothing is thrown across the
// boundary; out of memory sets the record's code to 1 and any other failure to 2.
#pragma once

#include <fmx/fmx.h>

#include <exception>
#include <new>
#include <type_traits>

namespace vdhost {

// A host call that cannot be carried out (null pointer, index out of range, bad encoding ...).
struct CallFailure : std::exception {
    const char* what() const noexcept override { return "host call failed"; }
};

template <class T>
T& deref(T* p) {
    if (!p) throw CallFailure();
    return *p;
}

inline void failWith(FMX_CallRecord* rec, int32_t code) noexcept {
    if (rec) rec->code = code;
}

// Runs body; on failure answers onFailure after setting the record's code.
template <class R, class F>
R hostCallOr(FMX_CallRecord* rec, R onFailure, F&& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        failWith(rec, FMX_RECORD_OUT_OF_MEMORY);
    } catch (...) {
        failWith(rec, FMX_RECORD_FAILED);
    }
    return onFailure;
}

template <class F>
auto hostCall(FMX_CallRecord* rec, F&& body) noexcept {
    using R = decltype(body());
    if constexpr (std::is_void_v<R>) {
        try {
            body();
        } catch (const std::bad_alloc&) {
            failWith(rec, FMX_RECORD_OUT_OF_MEMORY);
        } catch (...) {
            failWith(rec, FMX_RECORD_FAILED);
        }
    } else {
        return hostCallOr(rec, R{}, std::forward<F>(body));
    }
}

}  // namespace vdhost
