#include "fmapi/errors/vds_error.h"

#include "fmapi/errors/message_table.h"

#include <cstdio>
#include <new>

namespace vd {

VDSError gLastError;

VDSError::~VDSError() = default;

void VDSError::Clear() noexcept {
    code_ = 0;
    message_.clear();
    context_.reset();
}

void VDSError::SetContext(const char* functionName) noexcept {
    context_.reset();
    if (!functionName) return;
    try {
        context_.emplace(functionName);
    } catch (const std::bad_alloc&) {
        context_.reset();
    }
}

void VDSError::ApplyMessage(std::string_view message) noexcept {
    try {
        std::string text;
        if (context_) {
            text.reserve(context_->size() + 2 + message.size());
            text.append(*context_).append(": ");
        }
        text.append(message);
        message_ = std::move(text);
    } catch (const std::bad_alloc&) {
        // Out of memory while reporting: the bare table text needs no allocation beyond what the
        // string already holds in most cases; failing that, an empty message is still truthful.
        message_.clear();
    }
}

void VDSError::SetCode(int32_t code) noexcept {
    code_ = code;
    ApplyMessage(MessageForCode(code));
}

void VDSError::SetMessage(std::string_view message) noexcept { ApplyMessage(message); }

void VDSError::AppendDetail(std::string_view detail) noexcept {
    if (detail.empty()) return;
    try {
        message_.append(" ").append(detail);
    } catch (const std::bad_alloc&) {
        // The message without its detail still names the failure.
    }
}

void VDSError::CopyFrom(const VDSError& other) noexcept {
    if (&other == this) return;
    try {
        *this = other;
    } catch (const std::bad_alloc&) {
        code_ = other.code_;
        message_.clear();
        context_.reset();
    }
}

void VDSError::Format(char* buffer, size_t size) const noexcept {
    if (!buffer || size == 0) return;
    std::snprintf(buffer, size, "$%d:%s", static_cast<int>(code_), message_.c_str());
}

std::string VDSError::StatusText() const {
    return "$" + std::to_string(code_) + ":" + message_;
}

VDSError& Begin(const char* functionName) noexcept {
    gLastError.Clear();
    gLastError.SetContext(functionName);
    return gLastError;
}

void FormatLast(char* buffer, size_t size) noexcept { gLastError.Format(buffer, size); }

const char* FormatHex32(uint32_t value) noexcept {
    static char buffer[9];
    std::snprintf(buffer, sizeof buffer, "%8.8lX", static_cast<unsigned long>(value));
    return buffer;
}

}  // namespace vd
