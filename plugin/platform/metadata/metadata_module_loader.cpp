#include "platform/metadata/metadata_module_loader.h"

#include "platform/metadata/metadata_module_abi.h"

#include <dlfcn.h>

namespace vd::platform::metadata {

namespace {

static_assert(int(TagValues::kInterpreted) == VD_METADATA_INTERPRETED && int(TagValues::kRaw) == VD_METADATA_RAW &&
              int(TagValues::kBoth) == (VD_METADATA_INTERPRETED | VD_METADATA_RAW));

struct MetadataModule {
    VdMetadataReadFn read = nullptr;
    VdMetadataWriteFn write = nullptr;
    std::string problem;  // why it could not be loaded; empty when it was
};

void Anchor() {}

MetadataModule LoadModule() {
    MetadataModule module;
    const std::string path = MetadataModulePath();
    // RTLD_NODELETE: Exiv2's XMP toolkit keeps process-wide state that must not be unloaded under it.
    void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!handle) {
        const char* reason = ::dlerror();
        module.problem = "(tags cannot be read or written: the metadata module, which needs Exiv2 and TagLib, "
                         "cannot be loaded: " + std::string(reason ? reason : path) + ")";
        return module;
    }
    auto version = reinterpret_cast<VdMetadataAbiVersionFn>(::dlsym(handle, VD_METADATA_ABI_VERSION_SYMBOL));
    module.read = reinterpret_cast<VdMetadataReadFn>(::dlsym(handle, VD_METADATA_READ_SYMBOL));
    module.write = reinterpret_cast<VdMetadataWriteFn>(::dlsym(handle, VD_METADATA_WRITE_SYMBOL));
    if (!version || !module.read || !module.write || version() != VD_METADATA_MODULE_ABI_VERSION) {
        module.read = nullptr;
        module.write = nullptr;
        module.problem = "(tags cannot be read or written: " + path + " is not a metadata module of this plug-in)";
    }
    return module;
}

// Loaded once per process; the functions run on the host's main thread.
const MetadataModule& Module() {
    static const MetadataModule module = LoadModule();
    return module;
}

util::Status StatusOf(int result) {
    switch (result) {
        case VD_METADATA_OK: return util::kNoError;
        case VD_METADATA_NOT_FOUND: return util::kFileNotFound;
        case VD_METADATA_UNSUPPORTED: return util::kNoCodec;
        case VD_METADATA_BAD_KEY:
        case VD_METADATA_BAD_VALUE: return util::kBadParameter;
        case VD_METADATA_WRITE_FAILED: return util::kIoError;
        case VD_METADATA_NO_MEMORY: return util::kMemoryFull;
        default: return util::kInternalComponentError;
    }
}

void CollectTag(void* context, const char* family, const char* key, const char* label, const char* interpreted,
                const char* raw) {
    static_cast<std::vector<TagEntry>*>(context)->push_back(TagEntry{family, key, label, interpreted, raw});
}

constexpr size_t kProblemSize = 512;

}  // namespace

std::string MetadataModulePath() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&Anchor), &info) == 0 || !info.dli_fname) return kMetadataModuleName;
    const std::string self = info.dli_fname;
    const size_t slash = self.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string(".") : self.substr(0, slash);
    return folder + "/Resources/" + kMetadataModuleName;
}

util::Status ReadTags(const std::string& path, TagValues values, std::vector<TagEntry>& tags, std::string& detail) {
    const MetadataModule& module = Module();
    if (!module.read) {
        detail = module.problem;
        return util::kNoCodec;
    }
    std::vector<TagEntry> read;
    char problem[kProblemSize] = "";
    // The sink may throw std::bad_alloc through the module's C frames: the module catches it there.
    const int result = module.read(path.c_str(), int(values), CollectTag, &read, problem, sizeof problem);
    if (result != VD_METADATA_OK) {
        detail = problem;
        return StatusOf(result);
    }
    tags = std::move(read);
    return util::kNoError;
}

util::Status WriteTags(const std::string& path, const std::vector<TagAssignment>& assignments, std::string& detail) {
    const MetadataModule& module = Module();
    if (!module.write) {
        detail = module.problem;
        return util::kNoCodec;
    }
    std::vector<const char*> keys, values;
    for (const TagAssignment& a : assignments) {
        keys.push_back(a.key.c_str());
        values.push_back(a.value.c_str());
    }
    char problem[kProblemSize] = "";
    const int result = module.write(path.c_str(), keys.data(), values.data(), static_cast<int>(keys.size()), problem,
                                    sizeof problem);
    if (result != VD_METADATA_OK) detail = problem;
    return StatusOf(result);
}

}  // namespace vd::platform::metadata
