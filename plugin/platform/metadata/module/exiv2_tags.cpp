// EXIF, IPTC and XMP through Exiv2. The one place that includes Exiv2's headers.
#ifdef VD_METADATA_MODULE

#include "platform/metadata/module/module_tags.h"

#include <exiv2/exiv2.hpp>

#include <memory>
#include <string>

namespace vd::metadata_module {

namespace {

// Longer binary values (maker notes, embedded previews) are named by their size: their bytes as
// numbers would flood the report and tell a reader nothing.
constexpr long kLongestBinaryShown = 64;

void Quiet() {
    // Exiv2 writes its warnings to stderr of whatever process hosts the plug-in.
    static const bool muted = [] {
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        return true;
    }();
    (void)muted;
}

bool IsBinary(Exiv2::TypeId type) { return type == Exiv2::undefined || type == Exiv2::unsignedByte; }

// The value as interpreted ("1/250 s", "Canon EOS 5D") and as stored ("1/250"), those that forms asks for.
template <typename Datum>
void Values(const Datum& datum, const Exiv2::ExifData* exif, int forms, std::string& interpreted, std::string& raw) {
    interpreted.clear(), raw.clear();
    if (IsBinary(datum.typeId()) && datum.size() > kLongestBinaryShown) {
        interpreted = raw = "(" + std::to_string(datum.size()) + " bytes)";
        return;
    }
    if (forms & VD_METADATA_RAW) raw = datum.toString();
    if (!(forms & VD_METADATA_INTERPRETED)) return;
    interpreted = datum.print(exif);
    // A text in several languages reads as its default one, the way a viewer shows it.
    if (datum.typeId() == Exiv2::langAlt) {
        const auto* languages = dynamic_cast<const Exiv2::LangAltValue*>(&datum.value());
        if (languages && languages->value_.count("x-default")) interpreted = languages->toString("x-default");
    }
}

// The report's short names: the tag name for the main groups, the group and the name elsewhere
// (maker notes and thumbnails repeat the main groups' names).
std::string ExifLabel(const Exiv2::Exifdatum& datum) {
    const std::string group = datum.groupName();
    if (group == "Image" || group == "Photo" || group == "GPSInfo" || group == "Iop") return datum.tagName();
    return group + "." + datum.tagName();
}

std::string IptcLabel(const Exiv2::Iptcdatum& datum) {
    if (datum.recordName() == "Application2") return datum.tagName();
    return datum.recordName() + "." + datum.tagName();
}

// "Xmp.dc.title" is "dc.title": XMP names are only unique with their namespace prefix.
std::string XmpLabel(const Exiv2::Xmpdatum& datum) { return datum.groupName() + "." + datum.tagName(); }

Exiv2::Image::AutoPtr Open(const std::string& path) {
    Quiet();
    Exiv2::Image::AutoPtr image;
    try {
        image = Exiv2::ImageFactory::open(path);
    } catch (const Exiv2::AnyError& e) {
        throw TagFailure(VD_METADATA_UNSUPPORTED, std::string("not a picture Exiv2 reads: ") + e.what());
    }
    if (!image.get()) throw TagFailure(VD_METADATA_UNSUPPORTED, "not a picture Exiv2 reads");
    image->readMetadata();
    return image;
}

template <typename Data, typename Key, typename Datum>
void Assign(Data& data, const Assignment& a) {
    Key key(a.key);  // throws for a key the library does not know
    auto found = data.findKey(key);
    while (found != data.end()) {
        data.erase(found);
        found = data.findKey(key);
    }
    if (a.value.empty()) return;
    Datum datum(key);
    if (datum.setValue(a.value) != 0)
        throw TagFailure(VD_METADATA_BAD_VALUE, "\"" + a.value + "\" is no value for " + a.key);
    data.add(datum);
}

}  // namespace

bool IsImageKey(std::string_view key) {
    return StartsWith(key, "Exif.") || StartsWith(key, "Iptc.") || StartsWith(key, "Xmp.");
}

bool ReadImageTags(const std::string& path, int forms, const Sink& sink) {
    Quiet();
    // One look at the file tells its kind and opens it: asking the kind first and opening after
    // read the file's start twice more for every picture.
    Exiv2::Image::AutoPtr image;
    try {
        image = Exiv2::ImageFactory::open(Exiv2::BasicIo::AutoPtr(new Exiv2::FileIo(path)));
    } catch (const Exiv2::AnyError&) {
        return false;
    }
    if (!image.get()) return false;
    image->readMetadata();
    std::string interpreted, raw;
    const Exiv2::ExifData& exif = image->exifData();
    for (const Exiv2::Exifdatum& datum : exif) {
        Values(datum, &exif, forms, interpreted, raw);
        sink("EXIF", datum.key(), ExifLabel(datum), interpreted, raw);
    }
    for (const Exiv2::Iptcdatum& datum : image->iptcData()) {
        Values(datum, nullptr, forms, interpreted, raw);
        sink("IPTC", datum.key(), IptcLabel(datum), interpreted, raw);
    }
    for (const Exiv2::Xmpdatum& datum : image->xmpData()) {
        Values(datum, nullptr, forms, interpreted, raw);
        sink("XMP", datum.key(), XmpLabel(datum), interpreted, raw);
    }
    return true;
}

void WriteImageTags(const std::string& path, const std::vector<Assignment>& assignments) {
    Exiv2::Image::AutoPtr image = Open(path);
    for (const Assignment& a : assignments) {
        try {
            if (StartsWith(a.key, "Exif.")) Assign<Exiv2::ExifData, Exiv2::ExifKey, Exiv2::Exifdatum>(image->exifData(), a);
            else if (StartsWith(a.key, "Iptc.")) Assign<Exiv2::IptcData, Exiv2::IptcKey, Exiv2::Iptcdatum>(image->iptcData(), a);
            else Assign<Exiv2::XmpData, Exiv2::XmpKey, Exiv2::Xmpdatum>(image->xmpData(), a);
        } catch (const Exiv2::AnyError& e) {
            throw TagFailure(VD_METADATA_BAD_KEY, "\"" + a.key + "\" is no tag Exiv2 knows: " + e.what());
        }
    }
    try {
        image->writeMetadata();
    } catch (const Exiv2::AnyError& e) {
        throw TagFailure(VD_METADATA_WRITE_FAILED, std::string("Exiv2 could not save the picture: ") + e.what());
    }
}

}  // namespace vd::metadata_module

#endif
