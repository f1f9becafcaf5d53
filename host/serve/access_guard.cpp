#include "access_guard.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <sys/random.h>

namespace vdhost::serve {

namespace {

// Compares without stopping at the first difference, so the time taken says nothing about how
// much of a guessed token was right.
bool sameSecret(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    unsigned char difference = 0;
    for (size_t i = 0; i < a.size(); ++i) difference |= static_cast<unsigned char>(a[i] ^ b[i]);
    return difference == 0;
}

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

}  // namespace

std::string newAccessToken() {
    unsigned char bytes[32];
    size_t filled = 0;
    while (filled < sizeof bytes) {
        ssize_t n = getrandom(bytes + filled, sizeof bytes - filled, 0);
        if (n < 0) {
            if (errno == EINTR) continue;
            throw std::runtime_error(std::string("cannot make an access token: ") + std::strerror(errno));
        }
        filled += static_cast<size_t>(n);
    }
    static constexpr char kHex[] = "0123456789abcdef";
    std::string token;
    for (unsigned char b : bytes) {
        token += kHex[b >> 4];
        token += kHex[b & 15];
    }
    return token;
}

AccessGuard::AccessGuard(std::string token, int port) : token_(std::move(token)), port_(std::to_string(port)) {}

std::string AccessGuard::cookieName() const { return "vdhost_token_" + port_; }

std::string AccessGuard::cookieHeader() const {
    return cookieName() + "=" + token_ + "; Path=/; HttpOnly; SameSite=Strict";
}

bool AccessGuard::isOwnHost(std::string_view host) const {
    return host == "127.0.0.1:" + port_ || host == "localhost:" + port_;
}

bool AccessGuard::isOwnOrigin(std::string_view origin) const {
    return origin == "http://127.0.0.1:" + port_ || origin == "http://localhost:" + port_;
}

std::optional<std::string> AccessGuard::cookieToken(std::string_view cookies) const {
    const std::string name = cookieName();
    while (!cookies.empty()) {
        size_t end = cookies.find(';');
        std::string_view pair = trimmed(cookies.substr(0, end));
        size_t equals = pair.find('=');
        if (equals != std::string_view::npos && pair.substr(0, equals) == name)
            return std::string(pair.substr(equals + 1));
        if (end == std::string_view::npos) break;
        cookies.remove_prefix(end + 1);
    }
    return std::nullopt;
}

Verdict AccessGuard::check(const RequestFacts& request) const {
    using Kind = Verdict::Kind;
    // A page of another site that got its name to resolve to 127.0.0.1 still sends its own name.
    if (!isOwnHost(request.host)) return {Kind::Refuse, "this server answers only to 127.0.0.1:" + port_ + " and localhost:" + port_};
    if (request.origin && !isOwnOrigin(*request.origin))
        return {Kind::Refuse, "requests from other sites are refused"};
    if (request.fetchSite && *request.fetchSite == "cross-site")
        return {Kind::Refuse, "requests from other sites are refused"};
    if (auto kept = cookieToken(request.cookies); kept && sameSecret(*kept, token_)) return {Kind::Allow, {}};
    if (request.queryToken && sameSecret(*request.queryToken, token_)) return {Kind::AllowAndRemember, {}};
    return {Kind::Refuse, "open the address with the token that vdhost serve printed"};
}

}  // namespace vdhost::serve
