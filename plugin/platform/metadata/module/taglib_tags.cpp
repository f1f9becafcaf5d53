// ID3v1, ID3v2, Vorbis comments, MP4 and APE tags through TagLib. The one place that includes
// TagLib's headers.
#ifdef VD_METADATA_MODULE

#include "platform/metadata/module/module_tags.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1genres.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mp4tag.h>
#include <taglib/mpcfile.h>
#include <taglib/mpegfile.h>
#include <taglib/oggfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/urllinkframe.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>
#include <taglib/xiphcomment.h>

#include <cctype>
#include <string>

namespace vd::metadata_module {

namespace {

std::string Utf8(const TagLib::String& text) { return text.to8Bit(true); }
TagLib::String FromUtf8(const std::string& text) { return TagLib::String(text, TagLib::String::UTF8); }

std::string Joined(const TagLib::StringList& values) {
    std::string text;
    for (const TagLib::String& v : values) text += (text.empty() ? "" : "; ") + Utf8(v);
    return text;
}

// The tags a file holds, each none when the file has (or, with creation asked, can have) none.
struct Tags {
    TagLib::ID3v1::Tag* id3v1 = nullptr;
    TagLib::ID3v2::Tag* id3v2 = nullptr;
    TagLib::Ogg::XiphComment* vorbis = nullptr;
    TagLib::MP4::Tag* mp4 = nullptr;
    TagLib::APE::Tag* ape = nullptr;
};

struct Creation {
    bool id3v1 = false, id3v2 = false, ape = false, vorbis = false;
};

Tags TagsOf(TagLib::File* file, Creation create) {
    Tags t;
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) {
        t.id3v1 = mpeg->ID3v1Tag(create.id3v1);
        t.id3v2 = mpeg->ID3v2Tag(create.id3v2);
        t.ape = mpeg->APETag(create.ape);
    } else if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) {
        t.vorbis = flac->xiphComment(create.vorbis);
        t.id3v2 = flac->ID3v2Tag(create.id3v2);
        t.id3v1 = flac->ID3v1Tag(create.id3v1);
    } else if (auto* ogg = dynamic_cast<TagLib::Ogg::File*>(file)) {
        t.vorbis = dynamic_cast<TagLib::Ogg::XiphComment*>(ogg->tag());
    } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
        t.mp4 = mp4->tag();
    } else if (auto* ape = dynamic_cast<TagLib::APE::File*>(file)) {
        t.ape = ape->APETag(create.ape);
        t.id3v1 = ape->ID3v1Tag(create.id3v1);
    } else if (auto* wavpack = dynamic_cast<TagLib::WavPack::File*>(file)) {
        t.ape = wavpack->APETag(create.ape);
        t.id3v1 = wavpack->ID3v1Tag(create.id3v1);
    } else if (auto* mpc = dynamic_cast<TagLib::MPC::File*>(file)) {
        t.ape = mpc->APETag(create.ape);
        t.id3v1 = mpc->ID3v1Tag(create.id3v1);
    } else if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(file)) {
        if (create.id3v2 || wav->hasID3v2Tag()) t.id3v2 = wav->ID3v2Tag();
    } else if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(file)) {
        if (create.id3v2 || aiff->hasID3v2Tag()) t.id3v2 = aiff->tag();
    }
    return t;
}

struct OpenFile {
    TagLib::FileRef ref;
    TagLib::File* file = nullptr;
};

void Open(const std::string& path, bool forWriting, OpenFile& opened) {
    // New ID3v2 text is written as UTF-8, the encoding of ID3v2.4.
    TagLib::ID3v2::FrameFactory::instance()->setDefaultTextEncoding(TagLib::String::UTF8);
    opened.ref = TagLib::FileRef(path.c_str(), false);
    opened.file = opened.ref.file();
    if (forWriting && (!opened.file || !opened.file->isValid()))
        throw TagFailure(VD_METADATA_UNSUPPORTED, "not a picture or sound file whose tags can be written");
    if (forWriting && opened.file->readOnly()) throw TagFailure(VD_METADATA_WRITE_FAILED, "the file cannot be written");
}

// Numbered genres, "17" or the older "(17)", by their names.
std::string GenreNames(const TagLib::StringList& values) {
    TagLib::StringList named;
    for (TagLib::String v : values) {
        std::string text = v.to8Bit(true);
        if (text.size() > 2 && text.front() == '(' && text.back() == ')') text = text.substr(1, text.size() - 2);
        bool number = !text.empty() && text.size() <= 3;
        for (char c : text) number &= std::isdigit(static_cast<unsigned char>(c)) != 0;
        named.append(number && !TagLib::ID3v1::genre(std::stoi(text)).isEmpty() ? TagLib::ID3v1::genre(std::stoi(text)) : v);
    }
    return Joined(named);
}

void ReadId3v1(const TagLib::ID3v1::Tag& tag, const Sink& sink) {
    auto item = [&](const char* name, const std::string& value) {
        if (!value.empty()) sink("ID3v1", std::string("ID3v1.") + name, name, value, value);
    };
    item("Title", Utf8(tag.title()));
    item("Artist", Utf8(tag.artist()));
    item("Album", Utf8(tag.album()));
    item("Year", tag.year() ? std::to_string(tag.year()) : "");
    item("Comment", Utf8(tag.comment()));
    item("Track", tag.track() ? std::to_string(tag.track()) : "");
    if (tag.genreNumber() != 255) {
        const std::string number = std::to_string(tag.genreNumber());
        sink("ID3v1", "ID3v1.Genre", "Genre", Utf8(tag.genre()).empty() ? number : Utf8(tag.genre()), number);
    }
}

void ReadId3v2(const TagLib::ID3v2::Tag& tag, const Sink& sink) {
    for (const TagLib::ID3v2::Frame* frame : tag.frameList()) {
        std::string label(frame->frameID().data(), frame->frameID().size());
        std::string raw, interpreted;
        if (auto* user = dynamic_cast<const TagLib::ID3v2::UserTextIdentificationFrame*>(frame)) {
            label += "." + Utf8(user->description());
            TagLib::StringList values = user->fieldList();
            if (!values.isEmpty()) values.erase(values.begin());  // the description
            raw = interpreted = Joined(values);
        } else if (auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame)) {
            if (!comment->description().isEmpty()) label += "." + Utf8(comment->description());
            raw = interpreted = Utf8(comment->text());
        } else if (auto* text = dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(frame)) {
            raw = Joined(text->fieldList());
            interpreted = label == "TCON" ? GenreNames(text->fieldList()) : raw;
        } else if (auto* picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(frame)) {
            raw = interpreted = Utf8(picture->mimeType()) + ", " + std::to_string(picture->picture().size()) + " bytes";
        } else {
            raw = interpreted = Utf8(frame->toString());
        }
        sink("ID3v2", "ID3v2." + label, label, interpreted, raw);
    }
}

std::string Mp4Value(const std::string& key, const TagLib::MP4::Item& item) {
    if (key == "trkn" || key == "disk") {
        const TagLib::MP4::Item::IntPair pair = item.toIntPair();
        return std::to_string(pair.first) + (pair.second ? "/" + std::to_string(pair.second) : "");
    }
    if (!item.toStringList().isEmpty()) return Joined(item.toStringList());
    if (!item.toCoverArtList().isEmpty()) return std::to_string(item.toCoverArtList().size()) + " pictures";
    return std::to_string(item.toInt());
}

void Remove(TagLib::ID3v2::Tag& tag, const std::string& id, const TagLib::String* description) {
    const TagLib::ID3v2::FrameList frames = tag.frameListMap()[TagLib::ByteVector(id.c_str(), unsigned(id.size()))];
    for (TagLib::ID3v2::Frame* frame : frames) {
        if (description) {
            const auto* user = dynamic_cast<const TagLib::ID3v2::UserTextIdentificationFrame*>(frame);
            const auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame);
            const TagLib::String d = user ? user->description() : comment ? comment->description() : TagLib::String();
            if (d != *description) continue;
        }
        tag.removeFrame(frame, true);
    }
}

bool IsFrameId(const std::string& id) {
    if (id.size() != 4) return false;
    for (char c : id) if (!std::isupper(static_cast<unsigned char>(c)) && !std::isdigit(static_cast<unsigned char>(c))) return false;
    return true;
}

// "TIT2", "TXXX.description", "COMM" or "COMM.description", "WOAR" ...: what a tag editor sets.
void SetId3v2(TagLib::ID3v2::Tag& tag, const std::string& name, const std::string& value, TagLib::String::Type encoding,
              const std::string& key) {
    const size_t dot = name.find('.');
    const std::string id = name.substr(0, dot);
    const bool described = dot != std::string::npos;
    const TagLib::String description = described ? FromUtf8(name.substr(dot + 1)) : TagLib::String();
    const bool settable = IsFrameId(id) && (id == "TXXX" || id == "COMM" || (!described && (id[0] == 'T' || id[0] == 'W')));
    if (!settable || (id == "TXXX" && !described) || id == "WXXX")
        throw TagFailure(VD_METADATA_BAD_KEY, "\"" + key + "\" is no ID3v2 text, comment or link frame");
    const bool matchDescription = id == "TXXX" || id == "COMM";
    Remove(tag, id, matchDescription ? &description : nullptr);
    if (value.empty()) return;
    const TagLib::String text = FromUtf8(value);
    if (id == "TXXX") {
        auto* frame = new TagLib::ID3v2::UserTextIdentificationFrame(encoding);
        frame->setDescription(description);
        frame->setText(text);
        tag.addFrame(frame);
    } else if (id == "COMM") {
        auto* frame = new TagLib::ID3v2::CommentsFrame(encoding);
        frame->setLanguage("eng");
        frame->setDescription(description);
        frame->setText(text);
        tag.addFrame(frame);
    } else if (id[0] == 'T') {
        auto* frame = new TagLib::ID3v2::TextIdentificationFrame(TagLib::ByteVector(id.c_str(), 4), encoding);
        frame->setText(text);
        tag.addFrame(frame);
    } else {
        auto* frame = new TagLib::ID3v2::UrlLinkFrame(TagLib::ByteVector(id.c_str(), 4));
        frame->setUrl(text);
        tag.addFrame(frame);
    }
}

unsigned Number(const std::string& key, const std::string& value) {
    if (value.empty()) return 0;
    size_t used = 0;
    unsigned long n = 0;
    try {
        n = std::stoul(value, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (used != value.size() || n > 9999) throw TagFailure(VD_METADATA_BAD_VALUE, "\"" + value + "\" is no number for " + key);
    return unsigned(n);
}

// ID3v1 holds Latin-1 only: what it cannot hold becomes "?", as tag editors write it.
TagLib::String Latin1(const std::string& value) {
    std::string bytes;
    for (wchar_t c : FromUtf8(value)) bytes += static_cast<unsigned>(c) <= 0xFF ? char(c) : '?';
    return TagLib::String(bytes, TagLib::String::Latin1);
}

void SetId3v1(TagLib::ID3v1::Tag& tag, const std::string& name, const std::string& value, const std::string& key) {
    if (name == "Title") tag.setTitle(Latin1(value));
    else if (name == "Artist") tag.setArtist(Latin1(value));
    else if (name == "Album") tag.setAlbum(Latin1(value));
    else if (name == "Comment") tag.setComment(Latin1(value));
    else if (name == "Year") tag.setYear(Number(key, value));
    else if (name == "Track") tag.setTrack(Number(key, value));
    else if (name == "Genre") {
        if (!value.empty() && TagLib::ID3v1::genreIndex(FromUtf8(value)) == 255)
            throw TagFailure(VD_METADATA_BAD_VALUE, "\"" + value + "\" is none of the ID3v1 genres");
        tag.setGenre(FromUtf8(value));
    } else throw TagFailure(VD_METADATA_BAD_KEY, "\"" + key + "\" is none of Title, Artist, Album, Year, Comment, Track, Genre");
}

void SetMp4(TagLib::MP4::Tag& tag, const std::string& name, const std::string& value, const std::string& key) {
    const TagLib::String item = FromUtf8(name);
    if (value.empty()) return tag.removeItem(item);
    if (name == "trkn" || name == "disk") {
        const size_t slash = value.find('/');
        const unsigned first = Number(key, value.substr(0, slash));
        const unsigned second = slash == std::string::npos ? 0 : Number(key, value.substr(slash + 1));
        return tag.setItem(item, TagLib::MP4::Item(int(first), int(second)));
    }
    if (name == "tmpo") return tag.setItem(item, TagLib::MP4::Item(int(Number(key, value))));
    tag.setItem(item, TagLib::MP4::Item(TagLib::StringList(FromUtf8(value))));
}

std::string Upper(std::string text) {
    for (char& c : text) c = char(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

struct FamilyKey {
    std::string family;
    std::string name;
};

FamilyKey Split(const std::string& key) {
    const size_t dot = key.find('.');
    return {key.substr(0, dot), dot == std::string::npos ? std::string() : key.substr(dot + 1)};
}

[[noreturn]] void NotHeld(const std::string& key) {
    throw TagFailure(VD_METADATA_BAD_KEY, "this kind of file holds no tags like \"" + key + "\"");
}

}  // namespace

bool IsSoundKey(std::string_view key) {
    return StartsWith(key, "ID3v1.") || StartsWith(key, "ID3v2.") || StartsWith(key, "Vorbis.") ||
           StartsWith(key, "MP4.") || StartsWith(key, "APE.");
}

void ReadSoundTags(const std::string& path, const Sink& sink) {
    OpenFile opened;
    Open(path, false, opened);
    if (!opened.file || !opened.file->isValid()) return;  // no kind of file TagLib knows: no tags
    const Tags t = TagsOf(opened.file, {});
    if (t.id3v1) ReadId3v1(*t.id3v1, sink);
    if (t.id3v2) ReadId3v2(*t.id3v2, sink);
    if (t.vorbis)
        for (const auto& field : t.vorbis->fieldListMap())
            sink("Vorbis", "Vorbis." + Utf8(field.first), Utf8(field.first), Joined(field.second), Joined(field.second));
    if (t.mp4)
        for (const auto& item : t.mp4->itemMap()) {
            const std::string name = Utf8(item.first);
            const std::string value = Mp4Value(name, item.second);
            sink("MP4", "MP4." + name, name, value, value);
        }
    if (t.ape)
        for (const auto& item : t.ape->itemListMap()) {
            const std::string value = item.second.type() == TagLib::APE::Item::Binary
                                          ? std::to_string(item.second.binaryData().size()) + " bytes"
                                          : Joined(item.second.values());
            sink("APE", "APE." + Utf8(item.first), Utf8(item.first), value, value);
        }
}

void WriteSoundTags(const std::string& path, const std::vector<Assignment>& assignments) {
    OpenFile opened;
    Open(path, true, opened);
    Creation create;
    for (const Assignment& a : assignments) {
        const std::string family = Split(a.key).family;
        create.id3v1 |= family == "ID3v1";
        create.id3v2 |= family == "ID3v2";
        create.ape |= family == "APE";
        create.vorbis |= family == "Vorbis";
    }
    // An ID3v2.3 tag stays 2.3 (its text in UTF-16) for the players that read no other; any other,
    // and a new one, is written as ID3v2.4 in UTF-8.
    const Tags before = TagsOf(opened.file, {});
    const bool version3 = before.id3v2 && before.id3v2->header()->majorVersion() == 3;
    const TagLib::String::Type encoding = version3 ? TagLib::String::UTF16 : TagLib::String::UTF8;
    const Tags t = TagsOf(opened.file, create);
    for (const Assignment& a : assignments) {
        const FamilyKey k = Split(a.key);
        if (k.name.empty()) throw TagFailure(VD_METADATA_BAD_KEY, "\"" + a.key + "\" names no tag");
        if (k.family == "ID3v1") {
            if (!t.id3v1) NotHeld(a.key);
            SetId3v1(*t.id3v1, k.name, a.value, a.key);
        } else if (k.family == "ID3v2") {
            if (!t.id3v2) NotHeld(a.key);
            SetId3v2(*t.id3v2, k.name, a.value, encoding, a.key);
        } else if (k.family == "Vorbis") {
            if (!t.vorbis) NotHeld(a.key);
            if (a.value.empty()) t.vorbis->removeFields(FromUtf8(Upper(k.name)));
            else t.vorbis->addField(FromUtf8(Upper(k.name)), FromUtf8(a.value), true);
        } else if (k.family == "MP4") {
            if (!t.mp4) NotHeld(a.key);
            SetMp4(*t.mp4, k.name, a.value, a.key);
        } else {
            if (!t.ape) NotHeld(a.key);
            if (a.value.empty()) t.ape->removeItem(FromUtf8(k.name));
            else t.ape->addValue(FromUtf8(k.name), FromUtf8(a.value), true);
        }
    }
    bool saved = false;
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(opened.file))
        saved = mpeg->save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone,
                           version3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4, TagLib::File::DoNotDuplicate);
    else saved = opened.file->save();
    if (!saved) throw TagFailure(VD_METADATA_WRITE_FAILED, "TagLib could not save the file");
}

}  // namespace vd::metadata_module

#endif
