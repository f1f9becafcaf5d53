// What the two halves of the metadata module share: the tag families each library answers for, and
// how a refusal travels to the C entry points (an exception that carries the module's result code).
#pragma once

#ifdef VD_METADATA_MODULE

#include "platform/metadata/metadata_module_abi.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vd::metadata_module {

struct Assignment {
    std::string key;
    std::string value;  // empty: remove the tag
};

// A refusal with the module's result code and a sentence for the user.
class TagFailure : public std::runtime_error {
public:
    TagFailure(int result, const std::string& why) : std::runtime_error(why), result_(result) {}
    int Result() const noexcept { return result_; }

private:
    int result_;
};

struct Sink {
    VdMetadataSink call;
    void* context;
    void operator()(const std::string& family, const std::string& key, const std::string& label,
                    const std::string& interpreted, const std::string& raw) const {
        call(context, family.c_str(), key.c_str(), label.c_str(), interpreted.c_str(), raw.c_str());
    }
};

inline bool StartsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

// Exiv2: EXIF, IPTC and XMP of pictures.
bool IsImageKey(std::string_view key);
// False, with nothing read, for a file Exiv2 does not know as a picture (or cannot open). forms as
// vd_metadata_read takes it.
bool ReadImageTags(const std::string& path, int forms, const Sink& sink);
void WriteImageTags(const std::string& path, const std::vector<Assignment>& assignments);

// TagLib: ID3v1, ID3v2, Vorbis comments (Ogg and FLAC), MP4 and APE tags of sound files. Their two
// values cost the same, so both are always handed over.
bool IsSoundKey(std::string_view key);
void ReadSoundTags(const std::string& path, const Sink& sink);
void WriteSoundTags(const std::string& path, const std::vector<Assignment>& assignments);

}  // namespace vd::metadata_module

#endif
