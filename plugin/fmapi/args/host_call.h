// The host-call record every host call takes, and the one place where its outcome becomes an
// exception: code 1 is the host running out of memory (std::bad_alloc), code 2 any other failure
// of the call (HostCallFailed). Handlers never see a record; they see these exceptions, and the
// dispatch around every handler turns what escapes into a status.
#pragma once

#include <fmx/types.h>

#include <exception>
#include <type_traits>

namespace vd::fmapi {

class HostCallFailed : public std::exception {
public:
    const char* what() const noexcept override;
};

// A fresh record, { 1, 0 }, for one call.
struct CallRecord : FMX_CallRecord {
    CallRecord() : FMX_CallRecord{FMX_RECORD_VERSION, FMX_RECORD_OK} {}
};

// Throws for codes 1 and 2; every other code is success.
void ThrowIfFailed(const FMX_CallRecord& record);

// Runs one host call with a fresh record and checks it. Every wrapper goes through here.
template <class Call>
auto Checked(Call&& call) {
    CallRecord record;
    if constexpr (std::is_void_v<decltype(call(&record))>) {
        call(&record);
        ThrowIfFailed(record);
    } else {
        auto answer = call(&record);
        ThrowIfFailed(record);
        return answer;
    }
}

// For the release calls made from destructors, which must not throw: a release the host refuses
// leaves nothing for us to do.
template <class Call>
void Unchecked(Call&& call) noexcept {
    CallRecord record;
    call(&record);
}

}  // namespace vd::fmapi
