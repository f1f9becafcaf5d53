// The error object: the outcome of the running function as a code, a message and the name of the
// function, which every message carries as its prefix.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vd {

class VDSError {
public:
    VDSError() = default;
    virtual ~VDSError();
    VDSError(const VDSError&) = default;
    VDSError& operator=(const VDSError&) = default;

    void Clear() noexcept;
    // Names the running function; a copy that cannot be made leaves no context (and so no prefix).
    void SetContext(const char* functionName) noexcept;
    // The code and its table message, prefixed with the context.
    void SetCode(int32_t code) noexcept;
    // A message of the function's own, prefixed with the context; the code is unchanged.
    void SetMessage(std::string_view message) noexcept;
    // Adds " detail" to the message; an empty detail changes nothing.
    void AppendDetail(std::string_view detail) noexcept;
    void CopyFrom(const VDSError& other) noexcept;

    int32_t Code() const noexcept { return code_; }
    const std::string& Message() const noexcept { return message_; }
    const std::optional<std::string>& Context() const noexcept { return context_; }

    // "$code:message", cut to the buffer by snprintf (so always terminated when size > 0).
    void Format(char* buffer, size_t size) const noexcept;
    std::string StatusText() const;

private:
    void ApplyMessage(std::string_view message) noexcept;

    std::string message_;
    int32_t code_ = 0;
    std::optional<std::string> context_;
};

// The outcome of the last function called; used on the host's main thread only.
extern VDSError gLastError;

// What every function does first: clear the last outcome and name itself.
VDSError& Begin(const char* functionName) noexcept;

// gLastError as "$code:message" into the buffer.
void FormatLast(char* buffer, size_t size) noexcept;

// "%8.8lX" into one static buffer that the next call overwrites.
const char* FormatHex32(uint32_t value) noexcept;

}  // namespace vd
