// What the image tests share: a host session of the real bundle in a fresh folder, pictures made
// and read here byte by byte (24-bit BMP), and the streams of a container result.
#pragma once

#include "plugin/plugin_test_support.h"

#include <api/text_codec.h>
#include <api/values.h>
#include <session/session.h>
#include <support/temp_folder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vdtest {

struct Rgb {
    uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

struct Picture {
    int width = 0, height = 0;
    std::vector<Rgb> pixels;  // rows top to bottom
    Rgb At(int x, int y) const { return pixels[size_t(y) * size_t(width) + size_t(x)]; }
};

inline Picture MakePicture(int width, int height, const std::function<Rgb(int, int)>& colour) {
    Picture p{width, height, {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) p.pixels.push_back(colour(x, y));
    return p;
}

inline void PutLe(std::string& s, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) s += char(uint8_t(v >> (8 * i)));
}
inline uint32_t Le(const std::string& s, size_t at, int bytes) {
    uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i) v = v << 8 | uint8_t(s.at(at + size_t(i)));
    return v;
}

// A 24-bit bottom-up BMP file with a 40-byte information header.
inline std::string BmpOf(const Picture& p) {
    const size_t row = (size_t(p.width) * 3 + 3) / 4 * 4;
    std::string s = "BM";
    PutLe(s, uint32_t(54 + row * size_t(p.height)), 4);
    PutLe(s, 0, 4);
    PutLe(s, 54, 4);
    PutLe(s, 40, 4);
    PutLe(s, uint32_t(p.width), 4);
    PutLe(s, uint32_t(p.height), 4);
    PutLe(s, 1, 2);
    PutLe(s, 24, 2);
    for (int i = 0; i < 6; ++i) PutLe(s, 0, 4);
    for (int y = p.height - 1; y >= 0; --y) {
        for (int x = 0; x < p.width; ++x) {
            const Rgb c = p.At(x, y);
            s += char(c.b), s += char(c.g), s += char(c.r);
        }
        s.append(row - size_t(p.width) * 3, '\0');
    }
    return s;
}

// An uncompressed 24- or 32-bit BMP (any information header) read back; nothing for anything else.
inline std::optional<Picture> PictureOfBmp(const std::string& s) {
    if (s.size() < 54 || s.compare(0, 2, "BM") != 0) return std::nullopt;
    const size_t offset = Le(s, 10, 4);
    const int width = int(Le(s, 18, 4));
    const int32_t rawHeight = int32_t(Le(s, 22, 4));
    const int bits = int(Le(s, 28, 2));
    const uint32_t compression = Le(s, 30, 4);
    if ((bits != 24 && bits != 32) || (compression != 0 && compression != 3)) return std::nullopt;
    const int height = std::abs(rawHeight);
    const size_t row = (size_t(width) * size_t(bits / 8) + 3) / 4 * 4;
    if (offset + row * size_t(height) > s.size()) return std::nullopt;
    Picture p{width, height, std::vector<Rgb>(size_t(width) * size_t(height))};
    for (int y = 0; y < height; ++y) {
        const size_t line = offset + row * size_t(rawHeight > 0 ? height - 1 - y : y);
        for (int x = 0; x < width; ++x) {
            const size_t at = line + size_t(x) * size_t(bits / 8);
            p.pixels[size_t(y) * size_t(width) + size_t(x)] = {uint8_t(s[at + 2]), uint8_t(s[at + 1]), uint8_t(s[at])};
        }
    }
    return p;
}

inline double Psnr(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height) return 0;
    double sum = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i) {
        const auto d = [](uint8_t x, uint8_t y) { return double(x) - double(y); };
        sum += std::pow(d(a.pixels[i].r, b.pixels[i].r), 2) + std::pow(d(a.pixels[i].g, b.pixels[i].g), 2) +
               std::pow(d(a.pixels[i].b, b.pixels[i].b), 2);
    }
    const double mse = sum / (3.0 * double(a.pixels.size()));
    return mse == 0 ? 99 : 10 * std::log10(255.0 * 255.0 / mse);
}

// "TYPE|TYPE|..." of a container, or its text when it is none.
inline std::string StreamTypes(const FMX_Data& value) {
    if (!vdhost::isContainer(value)) return vdhost::utf8Of(value);
    std::string types;
    for (const auto& stream : value.binary.streams) {
        if (!types.empty()) types += '|';
        for (int shift : {24, 16, 8, 0}) types += char(stream.type >> shift);
    }
    return types;
}

inline FMX_Data ContainerWith(const char* type, const std::string& bytes) { return ContainerOf({{type, bytes}}); }

class ImageSessionTest : public ::testing::Test {
protected:
    ImageSessionTest() : tmp_("TMPDIR", root_.path().string()) {
        session_.emplace(BundleSession(root_.path() / "Base.vddb"));
        ResetSettings();
    }
    ~ImageSessionTest() override { ResetSettings(); }

    // The settings are the process's, kept from call to call: each test starts from the first ones.
    void ResetSettings() {
        Text(u"Vandrel_SetImageDefaults ( 512 ; 1 )");
        Convert(ContainerWith("BMPf", BmpOf(MakePicture(1, 1, [](int, int) { return Rgb{}; }))), "BMPf", -1, -1);
    }

    std::string Path(const std::string& name) const { return (root_.path() / name).string(); }
    std::string Write(const std::string& name, const std::string& bytes) const {
        writeFile(root_.path() / name, bytes);
        return Path(name);
    }

    FMX_Data Eval(const std::u16string& calculation, const std::vector<FMX_Data>& values = {}) {
        return EvaluateWith(*session_, calculation, values);
    }
    std::string Text(const std::u16string& calculation, const std::vector<FMX_Data>& values = {}) {
        return vdhost::utf8Of(Eval(calculation, values));
    }
    // Vandrel_ConvertImage of $a to the type with the 2-argument form.
    FMX_Data Convert(const FMX_Data& source, const std::string& type) {
        return Eval(u"Vandrel_ConvertImage ( $a ; $b )", {source, vdhost::makeTextUtf8(type)});
    }
    // The 11-argument form: depth and quality given, every other setting left to the exporter.
    FMX_Data Convert(const FMX_Data& source, const std::string& type, int depth, int quality) {
        return Eval(u"Vandrel_ConvertImage ( $a ; $b ; " + vdhost::utf8ToUtf16(std::to_string(depth)) +
                        u" ; -1 ; -1 ; -1 ; " + vdhost::utf8ToUtf16(std::to_string(quality)) + u" ; -1 ; -1 ; -1 ; -1 )",
                    {source, vdhost::makeTextUtf8(type)});
    }
    // A converted picture back as BMP pixels, through the plug-in's own BMP writer.
    std::optional<Picture> PixelsOf(const FMX_Data& converted) {
        const FMX_Data bmp = Convert(converted, "BMPf", 24, -1);
        return PictureOfBmp(StreamOf(bmp, "BMPf"));
    }

    TempFolder root_;
    ScopedEnv tmp_;
    std::optional<vdhost::Session> session_;
};

}  // namespace vdtest
