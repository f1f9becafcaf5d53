#include "routes.h"

#include "api/values.h"
#include "calc/interruption.h"
#include "html.h"

#include <algorithm>
#include <cstring>

namespace vdhost::serve {

namespace {

constexpr size_t kChunkBytes = 64 * 1024;

std::optional<std::string> header(const httplib::Request& req, const char* name) {
    if (!req.has_header(name)) return std::nullopt;
    return req.get_header_value(name);
}

std::optional<std::string> param(const httplib::Request& req, const char* name) {
    if (!req.has_param(name)) return std::nullopt;
    return req.get_param_value(name);
}

// The request's address without the token, for the redirect that drops it.
std::string addressWithout(const httplib::Request& req, const std::string& dropped) {
    std::string url = req.path;
    char separator = '?';
    for (const auto& [name, value] : req.params) {
        if (name == dropped) continue;
        url += separator + encodeQueryComponent(name) + "=" + encodeQueryComponent(value);
        separator = '&';
    }
    return url;
}

// The record a request names with rec=N: nullopt when it names none, 0 when what it names cannot be
// a record id (no record has it).
std::optional<int64_t> recordParam(const httplib::Request& req) {
    auto text = param(req, "rec");
    if (!text) return std::nullopt;
    if (text->empty() || text->size() > 15 || text->find_first_not_of("0123456789") != std::string::npos) return 0;
    return std::stoll(*text);
}

void fail(httplib::Response& res, int status, const std::string& message) {
    res.status = status;
    res.set_content(message + "\n", "text/plain; charset=utf-8");
}

void servePage(httplib::Response& res, std::optional<std::string> html) {
    if (!html) return fail(res, 404, "There is no such table or record.");
    res.set_header("Cache-Control", "no-store");
    res.set_content(std::move(*html), "text/html; charset=utf-8");
}

// The bytes stay in the shared buffer they came in; the response reads them a piece at a time, and
// only the pieces a Range request asks for.
void serveSlice(httplib::Response& res, ByteSlice slice) {
    size_t total = slice.length;
    std::string type = slice.mediaType;
    res.set_content_provider(total, type, [slice = std::move(slice)](size_t offset, size_t length, httplib::DataSink& sink) {
        if (offset >= slice.length) return false;
        length = std::min({length, kChunkBytes, slice.length - offset});
        return sink.write(reinterpret_cast<const char*>(slice.owner->data()) + slice.offset + offset, length);
    });
}

void serveFile(httplib::Response& res, std::shared_ptr<OpenFile> file, const std::string& mediaType) {
    res.set_content_provider(file->size(), mediaType, [file](size_t offset, size_t length, httplib::DataSink& sink) {
        char buffer[kChunkBytes];
        size_t n = file->read(offset, buffer, std::min(length, sizeof buffer));
        return n > 0 && sink.write(buffer, n);
    });
}

// A name for a download that no header can be broken with: what is not a plain character becomes
// "_" in the fallback name; the full name goes in RFC 5987 form.
std::string attachmentHeader(const std::string& name) {
    std::string plain;
    for (unsigned char c : name) plain += (c < 0x20 || c >= 0x7F || c == '"' || c == '\\' || c == ';') ? '_' : char(c);
    return "attachment; filename=\"" + plain + "\"; filename*=UTF-8''" + encodeQueryComponent(name);
}

class Routes {
public:
    explicit Routes(ServerParts parts) : p_(parts) {}

    void install(httplib::Server& server) {
        server.Get("/", [this](const auto& req, auto& res) { pageRoute(req, res, [&](const CalculationOutcome* o) {
            return std::optional(p_.pages.tables(o, "/"));
        }); });
        server.Get("/table", [this](const auto& req, auto& res) { pageRoute(req, res, [&](const CalculationOutcome* o) {
            std::string t = param(req, "t").value_or("");
            return p_.pages.table(t, o, addressWithout(req, "result"));
        }); });
        server.Get("/record", [this](const auto& req, auto& res) { pageRoute(req, res, [&](const CalculationOutcome* o) {
            std::string t = param(req, "t").value_or("");
            return p_.pages.record(t, recordParam(req), o, addressWithout(req, "result"));
        }); });
        server.Get("/media/picture", [this](const auto& req, auto& res) { picture(req, res); });
        server.Get("/media/preview", [this](const auto& req, auto& res) { preview(req, res); });
        server.Get("/media/waveform", [this](const auto& req, auto& res) { waveform(req, res); });
        server.Get("/media/sound.wav", [this](const auto& req, auto& res) { soundFile(req, res); });
        server.Get("/media/stream", [this](const auto& req, auto& res) { stream(req, res); });
        // Without the permission the address does not exist at all.
        if (p_.box) server.Post("/calc", [this](const auto& req, auto& res) { calculate(req, res); });
    }

private:
    // Runs work on the session's thread; a failure there becomes the response.
    template <typename Work>
    void onSession(httplib::Response& res, Work work) {
        try {
            p_.worker.call([&] { work(); });
        } catch (const WorkerStopped& e) {
            fail(res, 503, e.what());
        } catch (const calc::Interrupted& e) {
            fail(res, 503, e.what());
        } catch (const std::exception& e) {
            fail(res, 500, e.what());
        }
    }

    const CalculationOutcome* outcomeOf(const httplib::Request& req) {
        if (!p_.box) return nullptr;
        auto id = param(req, "result");
        return id ? p_.box->find(std::atoi(id->c_str())) : nullptr;
    }

    template <typename Render>
    void pageRoute(const httplib::Request& req, httplib::Response& res, Render render) {
        onSession(res, [&] { servePage(res, render(outcomeOf(req))); });
    }

    // The value a media address names; nullopt (and the response says why) when there is none.
    std::optional<FMX_Data> valueAt(const httplib::Request& req, httplib::Response& res) {
        if (auto id = param(req, "r")) {
            const CalculationOutcome* outcome = p_.box ? p_.box->find(std::atoi(id->c_str())) : nullptr;
            if (outcome && outcome->value) return outcome->value;
            fail(res, 404, "That result is no longer kept; evaluate the calculation again.");
            return std::nullopt;
        }
        auto table = param(req, "t"), field = param(req, "f");
        auto record = recordParam(req);
        if (table && field && !table->empty() && !field->empty()) {
            auto value = record ? p_.session.database().read(*table, *field, *record) : p_.session.field(*table, *field);
            if (value && isContainer(*value)) return value;
        }
        fail(res, 404, "There is no such container field.");
        return std::nullopt;
    }

    void picture(const httplib::Request& req, httplib::Response& res) {
        onSession(res, [&] {
            auto value = valueAt(req, res);
            if (!value) return;
            auto slice = browserPicture(value->binary);
            if (!slice && hasOtherPicture(value->binary)) slice = p_.media.picture(*value).picture;
            if (!slice) return fail(res, 404, "The container holds no picture that can be shown.");
            serveSlice(res, std::move(*slice));
        });
    }

    void preview(const httplib::Request& req, httplib::Response& res) {
        onSession(res, [&] {
            auto record = recordParam(req);
            if (!record) return fail(res, 400, "A preview needs the record (rec=N).");
            auto value = valueAt(req, res);
            if (!value) return;
            auto picture = browserPicture(value->binary);
            if (!picture) return fail(res, 404, "The container holds no picture that can be shown.");
            serveSlice(res, p_.previews.preview(containerFingerprint(value->binary), *picture));
            // The address carries the value's version: another value is another address.
            res.set_header("Cache-Control", "private, max-age=86400");
        });
    }

    void waveform(const httplib::Request& req, httplib::Response& res) {
        onSession(res, [&] {
            auto value = valueAt(req, res);
            if (!value) return;
            if (soundStreamIndex(value->binary) < 0) return fail(res, 404, "The container holds no sound.");
            const SoundMedia& sound = p_.media.sound(*value);
            if (!sound.waveform) return fail(res, 404, "No waveform: " + sound.problem);
            serveSlice(res, *sound.waveform);
        });
    }

    void soundFile(const httplib::Request& req, httplib::Response& res) {
        onSession(res, [&] {
            auto value = valueAt(req, res);
            if (!value) return;
            if (soundStreamIndex(value->binary) < 0) return fail(res, 404, "The container holds no sound.");
            const SoundMedia& sound = p_.media.sound(*value);
            if (!sound.wav) return fail(res, 404, "The sound was not converted: " + sound.problem);
            serveFile(res, sound.wav, "audio/wav");
        });
    }

    void stream(const httplib::Request& req, httplib::Response& res) {
        onSession(res, [&] {
            auto value = valueAt(req, res);
            if (!value) return;
            std::string index = param(req, "i").value_or("");
            size_t i = index.empty() || index.find_first_not_of("0123456789") != std::string::npos || index.size() > 9
                           ? SIZE_MAX
                           : std::stoul(index);
            if (i >= value->binary.streams.size() || !value->binary.streams[i].bytes)
                return fail(res, 404, "The container has no such stream.");
            const Stream& s = value->binary.streams[i];
            std::string name;
            auto stored = storedFileName(value->binary);
            if (stored && !isDescriptionStream(s.type)) {
                name = *stored;
            } else {
                std::string type = fourCharText(s.type);
                while (!type.empty() && type.back() == ' ') type.pop_back();
                name = param(req, "f").value_or("result") + "." + type;
            }
            res.set_header("Content-Disposition", attachmentHeader(name));
            serveSlice(res, ByteSlice{s.bytes, 0, s.size(), downloadMediaType(s.type)});
        });
    }

    void calculate(const httplib::Request& req, httplib::Response& res) {
        std::string back = param(req, "page").value_or("/");
        // Only a page of this server: a path, never another host ("//host") or scheme.
        if (back.empty() || back[0] != '/' || back.rfind("//", 0) == 0 || back.find('\\') != std::string::npos ||
            back.find_first_of("\r\n") != std::string::npos)
            back = "/";
        auto statement = param(req, "calculation");
        if (!statement || statement->find_first_not_of(" \t\r\n") == std::string::npos)
            return res.set_redirect(back, 303);
        std::optional<RecordAt> on;
        if (auto table = param(req, "t"), record = param(req, "rec"); table && record)
            on = RecordAt{*table, recordParam(req).value_or(0)};
        onSession(res, [&] {
            int id = p_.box->run(*statement, on).id;
            // After the POST the browser shows an ordinary page, so reloading it runs nothing again.
            res.set_redirect(back + (back.find('?') == std::string::npos ? "?" : "&") + "result=" + std::to_string(id) +
                                 "#result",
                             303);
        });
    }

    ServerParts p_;
};

}  // namespace

void installGuard(httplib::Server& server, const AccessGuard& guard) {
    server.set_pre_routing_handler([&guard](const httplib::Request& req, httplib::Response& res) {
        RequestFacts facts{req.get_header_value("Host"), header(req, "Origin"), header(req, "Sec-Fetch-Site"),
                           req.get_header_value("Cookie"), param(req, "token")};
        Verdict verdict = guard.check(facts);
        switch (verdict.kind) {
        case Verdict::Kind::Allow:
            return httplib::Server::HandlerResponse::Unhandled;
        case Verdict::Kind::AllowAndRemember:
            res.set_header("Set-Cookie", guard.cookieHeader());
            res.set_redirect(addressWithout(req, "token"), 303);
            return httplib::Server::HandlerResponse::Handled;
        case Verdict::Kind::Refuse:
            fail(res, 403, "Forbidden: " + verdict.reason + ".");
            return httplib::Server::HandlerResponse::Handled;
        }
        return httplib::Server::HandlerResponse::Handled;
    });
    server.set_post_routing_handler([](const httplib::Request&, httplib::Response& res) {
        res.set_header("X-Content-Type-Options", "nosniff");
        // Not "no-referrer": with it a browser sends "Origin: null" on the calculation form's POST,
        // which the guard must refuse.
        res.set_header("Referrer-Policy", "same-origin");
        res.set_header("X-Frame-Options", "DENY");
        res.set_header("Content-Security-Policy",
                       "default-src 'none'; img-src 'self'; media-src 'self'; style-src 'unsafe-inline'; "
                       "form-action 'self'; frame-ancestors 'none'; base-uri 'none'");
    });
}

std::shared_ptr<const void> installRoutes(httplib::Server& server, ServerParts parts) {
    auto routes = std::make_shared<Routes>(parts);
    routes->install(server);
    server.set_exception_handler([](const httplib::Request&, httplib::Response& res, std::exception_ptr) {
        fail(res, 500, "The request failed.");
    });
    return routes;
}

}  // namespace vdhost::serve
