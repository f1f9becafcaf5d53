#include "value_view.h"

#include "api/values.h"
#include "html.h"

#include <cstdio>
#include <functional>

namespace vdhost::serve {

namespace {

ValueAddress with(ValueAddress address, std::string name, std::string value) {
    address.emplace_back(std::move(name), std::move(value));
    return address;
}

std::string textView(const FMX_Data& value) {
    std::string text = utf8Of(value);
    if (text.empty()) return "<span class=\"empty\">empty</span>";
    for (auto& c : text)
        if (c == '\r') c = '\n';
    return "<pre>" + escapeHtml(text) + "</pre>";
}

std::string streamList(const FMX_BinaryData& binary, const ValueAddress& address) {
    std::string out = "<ul class=\"streams\">";
    for (size_t i = 0; i < binary.streams.size(); ++i) {
        const auto& s = binary.streams[i];
        out += "<li><a href=\"" + link("/media/stream", with(address, "i", std::to_string(i))) + "\" download>" +
               escapeHtml(fourCharText(s.type)) + "</a> " + byteCountText(s.size()) + "</li>";
    }
    return out + "</ul>";
}

std::string problemNote(const std::string& what, const std::string& problem) {
    return "<p class=\"note\">" + escapeHtml(what) + (problem.empty() ? "" : ": " + escapeHtml(problem)) + "</p>";
}

std::string previewVersion(const FMX_BinaryData& binary) {
    char hex[17];
    std::snprintf(hex, sizeof hex, "%016zx", std::hash<std::string>{}(containerFingerprint(binary)));
    return hex;
}

std::string pictureTag(const ValueAddress& address, const char* route, const char* description) {
    return "<img src=\"" + link(route, address) + "\" alt=\"" + description + "\" loading=\"lazy\">";
}

std::string containerView(const FMX_Data& value, const ValueAddress& address, PluginMedia& media, ViewSize size) {
    const auto& binary = value.binary;
    if (binary.streams.empty()) {
        std::string reference = utf8Of(value);
        if (reference.empty()) return "<span class=\"empty\">empty</span>";
        for (auto& c : reference)
            if (c == '\r') c = '\n';
        return "<p class=\"note\">stored by reference</p><pre>" + escapeHtml(reference) + "</pre>";
    }
    std::string out;
    bool shown = false;  // a picture, a player or a named file: the content itself is on the page
    if (browserPicture(binary)) {
        // A cell shows the small preview; its address carries the value's fingerprint, so a browser
        // may keep it for as long as the value stays.
        if (size == ViewSize::Cell)
            out += pictureTag(with(address, "v", previewVersion(binary)), "/media/preview", "picture");
        else
            out += pictureTag(address, "/media/picture", "picture");
        shown = true;
    } else if (hasOtherPicture(binary)) {
        const PictureMedia& converted = media.picture(value);
        shown = converted.picture.has_value();
        if (shown)
            out += pictureTag(address, "/media/picture", "picture");
        else
            out += problemNote("This picture cannot be shown; download it below", converted.problem);
    }
    if (soundStreamIndex(binary) >= 0) {
        const SoundMedia& sound = media.sound(value);
        if (sound.waveform) out += pictureTag(address, "/media/waveform", "waveform");
        shown = shown || sound.wav || sound.waveform;
        if (sound.wav)
            out += "<audio controls preload=\"metadata\" src=\"" + link("/media/sound.wav", address) + "\"></audio>";
        if (!sound.problem.empty()) out += problemNote("The sound cannot be played here", sound.problem);
    }
    if (auto name = storedFileName(binary)) {
        for (size_t i = 0; i < binary.streams.size(); ++i) {
            if (isDescriptionStream(binary.streams[i].type)) continue;
            out += "<p><a href=\"" + link("/media/stream", with(address, "i", std::to_string(i))) + "\" download=\"" +
                   escapeHtml(*name) + "\">" + escapeHtml(*name) + "</a> " + byteCountText(binary.streams[i].size()) +
                   "</p>";
            shown = true;
            break;
        }
    }
    if (size == ViewSize::Page || !shown) out += streamList(binary, address);
    return out;
}

}  // namespace

std::string renderValue(const FMX_Data& value, const ValueAddress& address, PluginMedia& media, ViewSize size) {
    if (isContainer(value)) return containerView(value, address, media, size);
    return textView(value);
}

}  // namespace vdhost::serve
