// The error object: the outcome of the last function called, kept as its code, its message and the
// name of the function, and read as one status text, "$code:name: message".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vd {

class VDSError {
public:
    // No outcome and no name: the status text is "$0:".
    void Clear() noexcept;
    // The function the outcome belongs to; a copy that cannot be made leaves no name.
    void SetName(const char* functionName) noexcept;
    // The outcome: the code and the function's message for it; "" stands for the code's table text.
    void Set(int32_t code, std::string_view message = {}) noexcept;

    int32_t Code() const noexcept { return code_; }
    const std::optional<std::string>& Name() const noexcept { return name_; }
    // The message shown after the name: the function's own or the code's table text; "" before
    // any outcome.
    std::string_view Message() const noexcept;

    // The status text, cut to the buffer by snprintf (so always terminated when size > 0).
    void Format(char* buffer, size_t size) const noexcept;
    std::string StatusText() const;

private:
    int32_t code_ = 0;
    std::optional<std::string> name_;
    std::optional<std::string> message_;  // none: no outcome yet, so neither name nor message shows
};

// How every status text reads: "$code:name: message", or "$code:message" without a name.
std::string StatusText(int32_t code, const char* name, std::string_view message);

// The outcome of the last function called; used on the host's main thread only.
extern VDSError gLastError;

// gLastError's status text into the buffer.
void FormatLast(char* buffer, size_t size) noexcept;

}  // namespace vd
