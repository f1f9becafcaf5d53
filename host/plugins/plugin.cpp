#include "plugin.h"

#include "memory_blocks.h"

#include "api/function_registry.h"

#include <dlfcn.h>

#include <cstring>
#include <vector>

namespace vdhost {

namespace fs = std::filesystem;

void Plugin::ModuleCloser::operator()(void* handle) const { dlclose(handle); }

Plugin::Plugin(const fs::path& bundle) : bundle_(fs::absolute(bundle)) {
    bundlePathUtf8_ = bundle_.string();
    fs::path module = bundle_ / (bundle_.stem().string() + ".fmx");
    if (!fs::is_regular_file(module))
        throw PluginLoadError(bundle_.filename().string() + ": no module " + module.filename().string() +
                              " in the bundle");
    // RTLD_LOCAL: two plug-ins may use the same internal names. RTLD_NODELETE: like a host
    // application, we keep a plug-in's code mapped until exit even after shutting it down, so that
    // nothing it handed out (thread-local destructors, callbacks a library still holds) can point into
    // unmapped memory, and its static objects stay visible to leak checkers.
    void* handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!handle) throw PluginLoadError(bundle_.filename().string() + ": " + dlerror());
    module_.reset(handle);
    entry_ = reinterpret_cast<FMX_ExternCallProc>(dlsym(handle, FMX_ENTRY_POINT_NAME));
    if (!entry_)
        throw PluginLoadError(bundle_.filename().string() + ": the module does not export " FMX_ENTRY_POINT_NAME);
}

Plugin::~Plugin() {
    if (started_) shutDown();
    FunctionRegistry::instance().removeOwnedBy(this);
}

std::string Plugin::bundleName() const { return bundle_.stem().string(); }

ExternCallBlock Plugin::newBlock(uint8_t selector) const {
    ExternCallBlock block;
    std::memset(&block, 0, sizeof block);
    block.whichCall = selector;
    block.pluginBundle = bundlePathUtf8_.c_str();
    const auto& memory = memoryBlockCallbacks();
    block.newHandle = memory.newHandle;
    block.setHandleSize = memory.setHandleSize;
    block.getHandleSize = memory.getHandleSize;
    block.handleData = memory.handleData;
    block.disposeHandle = memory.disposeHandle;
    return block;
}

void Plugin::call(ExternCallBlock& block) {
    FunctionRegistry::OwnerScope scope(this);
    entry_(&block);
}

intptr_t Plugin::start(const HostIdentity& identity) {
    ExternCallBlock block = newBlock(FMX_CALL_INIT);
    block.extnVersion = identity.interfaceVersion;
    std::u16string version = identity.versionText;  // NUL-terminated copy the plug-in may read
    block.parm2 = reinterpret_cast<uintptr_t>(version.c_str());
    call(block);
    started_ = block.result >= 0;
    if (started_) {
        name_ = requestString(FMX_STRING_NAME);
        description_ = requestString(FMX_STRING_DESCRIPTION);
        options_ = requestString(FMX_STRING_OPTIONS);
    }
    return block.result;
}

void Plugin::idle(uint8_t kind) {
    ExternCallBlock block = newBlock(FMX_CALL_IDLE);
    block.parm1 = kind;
    call(block);
}

void Plugin::shutDown() {
    ExternCallBlock block = newBlock(FMX_CALL_SHUTDOWN);
    call(block);
    started_ = false;
    FunctionRegistry::instance().removeOwnedBy(this);
}

void Plugin::configure() {
    ExternCallBlock block = newBlock(FMX_CALL_DO_APP_PREFERENCES);
    call(block);
}

std::u16string Plugin::requestString(uint8_t number, uint32_t capacity) {
    // Some plug-ins write a fixed text regardless of the capacity; leave room for it.
    std::vector<char16_t> buffer(std::max<uint32_t>(capacity, 64) + 64, u'\0');
    ExternCallBlock block = newBlock(FMX_CALL_GET_STRING);
    block.parm1 = number;
    block.parm3 = capacity;
    block.result = reinterpret_cast<intptr_t>(buffer.data());
    call(block);
    buffer.back() = u'\0';
    return std::u16string(buffer.data());
}

}  // namespace vdhost
