#include "serve/access_guard.h"

#include <gtest/gtest.h>

#include <vector>

namespace vdhost::serve {
namespace {

using Kind = Verdict::Kind;

const std::string kToken = std::string(64, 'a');

RequestFacts fromBrowser(std::string cookies) {
    return {"127.0.0.1:8123", std::nullopt, std::nullopt, std::move(cookies), std::nullopt};
}

TEST(AccessGuard, RefusesOtherHostsOriginsSitesAndTokens) {
    AccessGuard guard(kToken, 8123);
    std::string cookie = "other=1; vdhost_token_8123=" + kToken;
    EXPECT_EQ(guard.check(fromBrowser(cookie)).kind, Kind::Allow);

    auto facts = fromBrowser(cookie);
    facts.host = "localhost:8123";
    facts.origin = "http://localhost:8123";
    EXPECT_EQ(guard.check(facts).kind, Kind::Allow);

    for (std::string host : {"rebound.example:8123", "127.0.0.1:8124", "127.0.0.1", "127.0.0.1:8123.evil", ""}) {
        facts = fromBrowser(cookie);
        facts.host = host;
        EXPECT_EQ(guard.check(facts).kind, Kind::Refuse) << host;
    }
    for (std::string origin : {"http://evil.example", "null", "http://127.0.0.1:8124", "https://127.0.0.1:8123"}) {
        facts = fromBrowser(cookie);
        facts.origin = origin;
        EXPECT_EQ(guard.check(facts).kind, Kind::Refuse) << origin;
    }
    facts = fromBrowser(cookie);
    facts.fetchSite = "cross-site";
    EXPECT_EQ(guard.check(facts).kind, Kind::Refuse);

    // A token one character off, a token kept for another port's server, a cookie name inside a value.
    for (std::string cookies : std::vector<std::string>{"vdhost_token_8123=" + kToken.substr(1) + "b", "vdhost_token_8124=" + kToken,
                                "x=vdhost_token_8123=" + kToken, ""})
        EXPECT_EQ(guard.check(fromBrowser(cookies)).kind, Kind::Refuse) << cookies;
}

TEST(AccessGuard, TokenInTheAddressIsKeptInAStrictHttpOnlyCookie) {
    AccessGuard guard(kToken, 8123);
    auto facts = fromBrowser("");
    facts.queryToken = kToken;
    EXPECT_EQ(guard.check(facts).kind, Kind::AllowAndRemember);
    facts.queryToken = "guess";
    EXPECT_EQ(guard.check(facts).kind, Kind::Refuse);
    EXPECT_EQ(guard.cookieHeader(), "vdhost_token_8123=" + kToken + "; Path=/; HttpOnly; SameSite=Strict");

    std::string a = newAccessToken(), b = newAccessToken();
    EXPECT_EQ(a.size(), 64u);
    EXPECT_NE(a, b);
}

}  // namespace
}  // namespace vdhost::serve
