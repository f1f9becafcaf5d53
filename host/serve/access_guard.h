// Who may talk to the server. It listens on the loopback address only, but any page the user's
// browser opens can still reach 127.0.0.1: a random token, handed to the user at start-up and kept
// in a cookie after the first visit, shuts out other local users and programs; the Host and Origin
// checks shut out pages of other sites (cross-site requests, DNS rebinding).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vdhost::serve {

// What the guard looks at in a request.
struct RequestFacts {
    std::string host;                        // the Host header
    std::optional<std::string> origin;       // the Origin header, when sent
    std::optional<std::string> fetchSite;    // Sec-Fetch-Site, when sent
    std::string cookies;                     // the Cookie header
    std::optional<std::string> queryToken;   // ?token=...
};

struct Verdict {
    enum class Kind {
        Allow,
        // The token came in the address: keep it in a cookie and send the browser to the address
        // without it, so it stays out of the history and the pages' links.
        AllowAndRemember,
        Refuse,
    };
    Kind kind;
    std::string reason;  // why a request is refused
};

// 32 random bytes as 64 hex digits, from the kernel's random source. Throws std::runtime_error
// when there is none.
std::string newAccessToken();

class AccessGuard {
public:
    AccessGuard(std::string token, int port);

    Verdict check(const RequestFacts& request) const;

    // The cookie name carries the port: cookies are not kept apart by port, and two servers on one
    // machine must not overwrite each other's token.
    std::string cookieName() const;
    // The Set-Cookie value that keeps the token: HttpOnly, SameSite=Strict, for the whole site.
    std::string cookieHeader() const;
    const std::string& token() const { return token_; }

private:
    bool isOwnHost(std::string_view host) const;
    bool isOwnOrigin(std::string_view origin) const;
    std::optional<std::string> cookieToken(std::string_view cookies) const;

    std::string token_;
    std::string port_;
};

}  // namespace vdhost::serve
