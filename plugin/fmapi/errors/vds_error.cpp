#include "fmapi/errors/vds_error.h"

#include "fmapi/errors/message_table.h"

#include <cstdio>
#include <new>

namespace vd {

VDSError gLastError;

void VDSError::Clear() noexcept {
    code_ = 0;
    name_.reset();
    message_.reset();
}

void VDSError::SetName(const char* functionName) noexcept {
    name_.reset();
    if (!functionName) return;
    try {
        name_.emplace(functionName);
    } catch (const std::bad_alloc&) {
        name_.reset();
    }
}

void VDSError::Set(int32_t code, std::string_view message) noexcept {
    code_ = code;
    try {
        message_.emplace(message);
    } catch (const std::bad_alloc&) {
        // Out of memory while reporting: the code's table text needs no copy and still names it.
        message_.emplace();
    }
}

std::string_view VDSError::Message() const noexcept {
    if (!message_) return {};
    return message_->empty() ? MessageForCode(code_) : std::string_view(*message_);
}

void VDSError::Format(char* buffer, size_t size) const noexcept {
    if (!buffer || size == 0) return;
    const bool named = name_ && message_;
    const std::string_view message = Message();
    std::snprintf(buffer, size, "$%d:%s%s%.*s", static_cast<int>(code_), named ? name_->c_str() : "",
                  named ? ": " : "", static_cast<int>(message.size()), message.data());
}

std::string VDSError::StatusText() const {
    return vd::StatusText(code_, name_ && message_ ? name_->c_str() : nullptr, Message());
}

std::string StatusText(int32_t code, const char* name, std::string_view message) {
    std::string text = "$" + std::to_string(code) + ":";
    if (name) text.append(name).append(": ");
    return text.append(message);
}

void FormatLast(char* buffer, size_t size) noexcept { gLastError.Format(buffer, size); }

}  // namespace vd
