// A database with a text, a picture and a sound field, and vdhost serve running on it as a child
// process on a free loopback port, with the real plug-in.
#pragma once

#include "support/process.h"

#include <httplib.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vdtest {

// An uncompressed PNG of the given size (stored deflate blocks), so tests know its natural size.
std::string pngOfSize(int width, int height);

// Builds People::Name (text), People::Photo (a PNG of kPhotoWidth x kPhotoHeight) and
// People::Tone (a sound of kToneSeconds made by Vandrel_CreateSound).
void buildPeopleDatabase(const std::filesystem::path& database);

constexpr int kPhotoWidth = 37;
constexpr int kPhotoHeight = 23;
constexpr double kToneSeconds = 1.5;

class ServedDatabase {
public:
    // Starts vdhost serve with extra arguments after the command; throws when it does not start.
    ServedDatabase(const std::filesystem::path& database, const std::vector<std::string>& serveArguments,
                   const std::vector<std::string>& globalArguments = {});
    ~ServedDatabase();  // ends the server with SIGTERM
    ServedDatabase(const ServedDatabase&) = delete;
    ServedDatabase& operator=(const ServedDatabase&) = delete;

    int port() const { return port_; }
    const std::string& token() const { return token_; }
    std::string base() const { return "http://127.0.0.1:" + std::to_string(port_); }
    std::string cookie() const { return "vdhost_token_" + std::to_string(port_) + "=" + token_; }

    // A client that sends the token's cookie (and whatever headers are given).
    httplib::Client client(const httplib::Headers& extra = {}) const;

    // SIGTERM, then the exit status.
    int stop();

private:
    std::optional<StartedProcess> process_;
    int port_ = 0;
    std::string token_;
};

}  // namespace vdtest
