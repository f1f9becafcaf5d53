// An HTTP server on the loopback interface for the tests of web images.
#pragma once

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vdtest {

using Clock = std::chrono::steady_clock;

// An HTTP server on 127.0.0.1 that answers one connection at a time: "/picture" with the picture,
// "/stall" with nothing until the client gives up, "/huge" with more than any cap, anything else
// with 404. It stops by itself when the test ends and never waits longer than a few seconds.
class LoopbackServer {
public:
    explicit LoopbackServer(std::string picture) : picture_(std::move(picture)) {
        listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || ::listen(listener_, 4) != 0 ||
            ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0)
            throw std::runtime_error("no loopback socket");
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { Serve(); });
    }
    ~LoopbackServer() {
        stop_ = true;
        thread_.join();
        ::close(listener_);
    }

    std::string Url(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port_) + path; }

private:
    static bool Readable(int fd, int milliseconds) {
        pollfd p{fd, POLLIN, 0};
        return ::poll(&p, 1, milliseconds) > 0;
    }
    static void Send(int fd, const std::string& bytes) { ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL); }

    void Serve() {
        while (!stop_) {
            if (!Readable(listener_, 50)) continue;
            const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
            if (client < 0) continue;
            std::string request;
            char buffer[1024];
            const auto start = Clock::now();
            while (request.find("\r\n\r\n") == std::string::npos && Clock::now() - start < std::chrono::seconds(2)) {
                if (!Readable(client, 50)) continue;
                const ssize_t n = ::recv(client, buffer, sizeof buffer, 0);
                if (n <= 0) break;
                request.append(buffer, size_t(n));
            }
            Answer(client, request.substr(4, request.find(' ', 4) - 4));
            ::close(client);
        }
    }

    void Answer(int client, const std::string& path) {
        if (path == "/picture") {
            Send(client, "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(picture_.size()) +
                             "\r\nConnection: close\r\n\r\n" + picture_);
        } else if (path == "/stall") {
            // Until the client hangs up (its time-out), the test ends, or five seconds pass.
            const auto start = Clock::now();
            char byte;
            while (!stop_ && Clock::now() - start < std::chrono::seconds(5))
                if (Readable(client, 50) && ::recv(client, &byte, 1, 0) <= 0) break;
        } else if (path == "/huge") {
            Send(client, "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
            const std::string chunk(16384, 'x');
            for (int i = 0; i < 64 && !stop_; ++i)
                if (::send(client, chunk.data(), chunk.size(), MSG_NOSIGNAL) < 0) break;
        } else {
            Send(client, "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        }
    }

    std::string picture_;
    int listener_ = -1;
    uint16_t port_ = 0;
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

}  // namespace vdtest
