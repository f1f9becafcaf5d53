#include "image/conversion_dialog.h"

#include "platform/ui/dialog_service.h"
#include "util/settings_text.h"

#include <string_view>
#include <vector>

namespace vd::image {

namespace {

struct Choice {
    const char* word;
    const char* label;
    int32_t value;
};

constexpr Choice kDepths[] = {{"source", "Same as the picture", -1},   {"colour", "Millions of colours", 24},
                              {"alpha", "Millions of colours+", 32},   {"grey", "256 greys", 40},
                              {"bilevel", "Black and white", 1}};
constexpr Choice kQualities[] = {{"default", "Exporter's default", -1}, {"least", "Least", 0},
                                 {"low", "Low", 256},                    {"normal", "Normal", 512},
                                 {"high", "High", 768},                  {"best", "Best", 1023},
                                 {"lossless", "Lossless", 1024}};
constexpr Choice kTiffCompressions[] = {{"none", "None", 1},   {"lzw", "LZW", 5},
                                        {"deflate", "Deflate", 8}, {"packbits", "PackBits", 32773}};
constexpr Choice kRunLength[] = {{"none", "None", 1}, {"rle", "Run-length", 32773}};

template <size_t N>
platform::ui::FormControl Control(const char* name, const char* label, const Choice (&choices)[N]) {
    platform::ui::FormControl control{name, label, {}, 0};
    for (const Choice& c : choices) control.choices.push_back({c.word, c.label});
    return control;
}

void Put32(std::vector<uint8_t>& out, uint32_t value) {
    for (int shift : {24, 16, 8, 0}) out.push_back(uint8_t(value >> shift));
}

}  // namespace

util::Status RunImageExportDialog(const platform::ImageFormat& format, std::string& settingsText, std::string& detail) {
    const std::string_view coder = format.coder;
    const bool tiff = coder == "tiffsave_buffer";
    const bool runLength = coder == "TGA" || coder == "SGI" || coder == "BMP";

    platform::ui::FormRequest form;
    form.title = std::string(format.description) + " Settings";
    form.controls.push_back(Control("depth", "Depth", kDepths));
    if (format.lossy) form.controls.push_back(Control("quality", "Quality", kQualities));
    if (tiff) form.controls.push_back(Control("compression", "Compression", kTiffCompressions));
    if (runLength) form.controls.push_back(Control("compression", "Compression", kRunLength));

    const platform::ui::FormAnswer answer = platform::ui::ShowForm(form);
    detail = answer.detail;
    if (answer.status != util::kNoError) return answer.status;
    if (answer.selected.size() != form.controls.size()) return util::kUserCancelled;

    int32_t depth = kDepths[answer.selected[0]].value, quality = -1, compression = -1;
    size_t next = 1;
    if (format.lossy) quality = kQualities[answer.selected[next++]].value;
    if (tiff) compression = kTiffCompressions[answer.selected[next++]].value;
    if (runLength) compression = kRunLength[answer.selected[next++]].value;

    std::vector<uint8_t> bytes;
    Put32(bytes, format.code);
    Put32(bytes, uint32_t(depth));
    Put32(bytes, uint32_t(quality));
    Put32(bytes, uint32_t(compression));
    return util::SettingsToHexText(bytes, settingsText);
}

}  // namespace vd::image
