// The test plug-in. It talks to the host only through the C API, as any plug-in would.
#include <fmx/fmx.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <time.h>

namespace {

constexpr uint32_t kPluginId = 'F' << 24 | 'X' << 16 | 'T' << 8 | 'R';

struct Rec : FMX_CallRecord {
    Rec() : FMX_CallRecord{FMX_RECORD_VERSION, FMX_RECORD_OK} {}
    // A fresh record for one call: Rec() lives until the end of the call's full expression.
    operator FMX_CallRecord*() { return this; }
};

// Owners for the host objects the fixture makes.
struct Text {
    FMX_Text* p;
    Text() : p(FM_Text_Constructor1(Rec())) {}
    explicit Text(const std::string& utf8) : Text() { FM_Text_Assign(p, utf8.c_str(), FMX_ENCODING_UTF8, Rec()); }
    ~Text() { FM_Text_Delete(p, Rec()); }
    Text(const Text&) = delete;
};

struct Quad {
    FMX_QuadChar* p;
    explicit Quad(const char* c) : p(FM_QuadChar_Constructor2(c[0], c[1], c[2], c[3], Rec())) {}
    explicit Quad(uint32_t code) : p(FM_QuadChar_Constructor1(Rec())) { FM_QuadChar_SetMacType(p, code, Rec()); }
    ~Quad() { FM_QuadChar_Delete(p, Rec()); }
    Quad(const Quad&) = delete;
};

std::string utf8(const FMX_Text* t) {
    uint32_t n = FM_Text_GetSize(t, Rec());
    std::string out(4 * n + 1, '\0');
    out.resize(FM_Text_GetBytes(t, out.data(), static_cast<uint32_t>(out.size()), 0, FMX_TEXT_ALL,
                                FMX_ENCODING_UTF8, Rec()));
    return out;
}

std::string argText(const FMX_DataVect* args, uint32_t i) { return utf8(FM_DataVect_AtAsText(args, i, Rec())); }

void setText(FMX_Data* result, const std::string& s) {
    Text t(s);
    FMX_Locale* locale = FM_Locale_Constructor1(FMX_LOCALE_CURRENT, Rec());
    FM_Data_SetAsText(result, t.p, locale, FMX_TYPE_TEXT, Rec());
    FM_Locale_Delete(locale, Rec());
}

std::string typeText(uint32_t code) {
    std::string s(4, ' ');
    for (int i = 0; i < 4; ++i) s[i] = static_cast<char>(code >> (24 - 8 * i));
    return s;
}

// What the host told the fixture at start-up.
int16_t gInterfaceVersion = 0;
std::string gVersionText, gBundle;
FMX_NewHandleProc gNewHandle;
FMX_SetHandleSizeProc gSetHandleSize;
FMX_HandleDataProc gHandleData;
FMX_GetHandleSizeProc gGetHandleSize;
FMX_MemHandle gLegacy = nullptr;

// Fixture_Echo ( value ... ): one argument comes back as it is; several as their texts joined by "|".
FMX_ErrCode echo(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data* result) {
    uint32_t n = FM_DataVect_Size(args, Rec());
    if (n == 1) {
        const FMX_Data* d = FM_DataVect_At(args, 0, Rec());
        int32_t type = FM_Data_GetNativeType(d, Rec());
        if (type == FMX_TYPE_BINARY && FM_BinaryData_GetCount(FM_Data_GetBinaryData(d, Rec()), Rec()) > 0)
            return FM_Data_SetBinaryData(result, FM_Data_GetBinaryData(d, Rec()), true, Rec());
        if (type == FMX_TYPE_NUMBER || type == FMX_TYPE_BOOLEAN)
            return FM_Data_SetAsNumber(result, FM_Data_GetAsNumber(d, Rec()), type, Rec());
        FMX_Locale* locale = FM_Locale_Constructor1(FMX_LOCALE_CURRENT, Rec());
        FMX_ErrCode e = FM_Data_SetAsText(result, FM_Data_GetAsText(d, Rec()), locale, type, Rec());
        FM_Locale_Delete(locale, Rec());
        return e;
    }
    std::string joined;
    for (uint32_t i = 0; i < n; ++i) joined += (i ? "|" : "") + argText(args, i);
    setText(result, joined);
    return 0;
}

// Fixture_Streams ( type ; text { ; type ; text ... } ): a container of those streams, in that order.
// "FNAM" streams go through the host's file-name encoding.
FMX_ErrCode streams(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data* result) {
    uint32_t n = FM_DataVect_Size(args, Rec());
    if (n % 2) return 22;
    FMX_BinaryData* b = FM_BinaryData_Constructor1(Rec());
    FMX_ErrCode e = 0;
    for (uint32_t i = 0; i + 1 < n && !e; i += 2) {
        std::string type = argText(args, i), data = argText(args, i + 1);
        if (type.size() != 4) {
            e = 23;
        } else if (type == "FNAM") {
            e = FM_BinaryData_AddFNAMData(b, Text(data).p, Rec());
        } else {
            e = FM_BinaryData_Add(b, Quad(type.c_str()).p, static_cast<uint32_t>(data.size()), data.data(), Rec());
        }
    }
    if (!e) e = FM_Data_SetBinaryData(result, b, true, Rec());
    FM_BinaryData_Delete(b, Rec());
    return e;
}

// Fixture_Describe ( value ): "type=T empty=E text=X streams=TYPE:size,..." with FNAM decoded.
FMX_ErrCode describe(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data* result) {
    const FMX_Data* d = FM_DataVect_At(args, 0, Rec());
    std::string s = "type=" + std::to_string(FM_Data_GetNativeType(d, Rec())) +
                    " empty=" + std::to_string(FM_Data_IsEmpty(d, Rec())) + " text=" + utf8(FM_Data_GetAsText(d, Rec()));
    const FMX_BinaryData* b = FM_DataVect_AtAsBinaryData(args, 0, Rec());
    int32_t count = FM_BinaryData_GetCount(b, Rec());
    s += " streams=";
    for (int32_t i = 0; i < count; ++i) {
        Quad q(0u);
        FM_BinaryData_GetType(b, i, q.p, Rec());
        uint32_t code = FM_QuadChar_GetMacType(q.p, Rec());
        s += (i ? "," : "") + typeText(code) + ":";
        if (typeText(code) == "FNAM") {
            Text name;
            FM_BinaryData_GetFNAMData(b, name.p, Rec());
            s += utf8(name.p);
        } else {
            uint32_t size = FM_BinaryData_GetSize(b, i, Rec());
            std::string bytes(size, '\0');
            FM_BinaryData_GetData(b, i, 0, size, bytes.data(), Rec());
            s += bytes;
        }
    }
    setText(result, s);
    return 0;
}

// Fixture_Fail ( code ): fails with that code.
FMX_ErrCode fail(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data*) {
    return static_cast<FMX_ErrCode>(FM_FixPt_AsLong(FM_DataVect_AtAsNumber(args, 0, Rec()), Rec()));
}

// Fixture_Evaluate ( calculation ): evaluates the text through the host, as a plug-in asks for
// Get ( FilePath ). A failed evaluation answers "error N".
FMX_ErrCode evaluate(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data* result) {
    FMX_ExprEnv* env = FM_ExprEnv_Constructor1(0, Rec());
    FMX_Data* out = FM_Data_Constructor1(Rec());
    Text expr(argText(args, 0));
    FMX_ErrCode e = FM_ExprEnv_Evaluate(env, expr.p, out, Rec());
    setText(result, e ? "error " + std::to_string(e) : utf8(FM_Data_GetAsText(out, Rec())));
    FM_Data_Delete(out, Rec());
    FM_ExprEnv_Delete(env, Rec());
    return 0;
}

// Fixture_HostInfo: what the host passed at start-up.
FMX_ErrCode hostInfo(int16_t, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data* result) {
    setText(result, std::to_string(gInterfaceVersion) + "|" + gVersionText + "|" + gBundle);
    return 0;
}

// Fixture_Legacy ( text ): keeps the text in a host memory block and reads it back.
FMX_ErrCode legacy(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data* result) {
    std::string s = argText(args, 0);
    if (!gLegacy) gLegacy = gNewHandle(0);
    if (!gLegacy || gSetHandleSize(gLegacy, static_cast<int32_t>(s.size()))) return 108;
    std::memcpy(gHandleData(gLegacy), s.data(), s.size());
    setText(result, std::string(gHandleData(gLegacy), static_cast<size_t>(gGetHandleSize(gLegacy))));
    return 0;
}

// Fixture_Sleep ( seconds ): sleeps in steps of 10 ms, as a long computation would run, then
// answers the seconds. It knows nothing of signals: the host must cope with a call it cannot stop.
// When VDFIXTURE_SLEEPING names a file, the file is made as the sleep starts, so a test knows when
// the call is under way.
FMX_ErrCode sleepFor(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data* result) {
    if (const char* mark = std::getenv("VDFIXTURE_SLEEPING"))
        if (FILE* f = std::fopen(mark, "w")) std::fclose(f);
    const double seconds = FM_FixPt_AsFloat(FM_DataVect_AtAsNumber(args, 0, Rec()), Rec());
    const timespec step{0, 10'000'000};
    for (double slept = 0; slept < seconds; slept += 0.01) nanosleep(&step, nullptr);
    return FM_Data_SetAsNumber(result, FM_DataVect_AtAsNumber(args, 0, Rec()), FMX_TYPE_NUMBER, Rec());
}

struct Entry {
    int16_t id;
    const char* name;
    const char* prototype;
    int16_t minArgs, maxArgs;
    FMX_ExtPluginType handler;
};

const Entry kFunctions[] = {
    {1, "Fixture_Echo", "Fixture_Echo ( value ... )", 0, -1, echo},
    {2, "Fixture_Streams", "Fixture_Streams ( type ; text ... )", 0, -1, streams},
    {3, "Fixture_Describe", "Fixture_Describe ( value )", 1, 1, describe},
    {4, "Fixture_Fail", "Fixture_Fail ( code )", 1, 1, fail},
    {5, "Fixture_Evaluate", "Fixture_Evaluate ( calculation )", 1, 1, evaluate},
    {6, "Fixture_HostInfo", "Fixture_HostInfo", 0, 0, hostInfo},
    {7, "Fixture_Legacy", "Fixture_Legacy ( text )", 1, 1, legacy},
    {8, "Fixture_Sleep", "Fixture_Sleep ( seconds )", 1, 1, sleepFor},
};

intptr_t startUp(ExternCallBlock* block) {
    if (const char* forced = std::getenv("VDFIXTURE_STARTUP")) return std::atoi(forced);
    gInterfaceVersion = block->extnVersion;
    gVersionText.clear();
    for (auto* u = reinterpret_cast<const uint16_t*>(block->parm2); u && *u; ++u)
        gVersionText += static_cast<char>(*u < 128 ? *u : '?');
    gBundle = static_cast<const char*>(block->pluginBundle);
    gNewHandle = block->newHandle;
    gSetHandleSize = block->setHandleSize;
    gHandleData = block->handleData;
    gGetHandleSize = block->getHandleSize;
    Quad id(kPluginId);
    for (const auto& f : kFunctions) {
        Text name(f.name), prototype(f.prototype);
        if (FM_ExprEnv_RegisterExternalFunction(id.p, f.id, name.p, prototype.p, f.minArgs, f.maxArgs,
                                                FMX_FLAG_DISPLAY_IN_ALL_DIALOGS | FMX_FLAG_NO_USER_INTERFACE,
                                                f.handler, Rec()))
            return -2;
    }
    return 52;
}

void shutDown(ExternCallBlock* block) {
    Quad id(kPluginId);
    for (const auto& f : kFunctions) FM_ExprEnv_UnRegisterExternalFunction(id.p, f.id, Rec());
    if (gLegacy) block->disposeHandle(gLegacy);
    gLegacy = nullptr;
}

void copyString(ExternCallBlock* block, const char* s) {
    auto* out = reinterpret_cast<uint16_t*>(block->result);
    size_t n = std::strlen(s);
    if (n + 1 > block->parm3) n = block->parm3 ? block->parm3 - 1 : 0;
    for (size_t i = 0; i < n; ++i) out[i] = static_cast<uint16_t>(s[i]);
    if (block->parm3) out[n] = 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void FMExternCallProc(ExternCallBlock* block) {
    switch (block->whichCall) {
    case FMX_CALL_INIT:
        block->result = startUp(block);
        break;
    case FMX_CALL_SHUTDOWN:
        shutDown(block);
        break;
    case FMX_CALL_GET_STRING:
        copyString(block, block->parm1 == FMX_STRING_NAME          ? "Fixture"
                          : block->parm1 == FMX_STRING_DESCRIPTION ? "Exercises the host in tests."
                          : block->parm1 == FMX_STRING_OPTIONS     ? "FXTR1nnnnnn"
                                                                   : "");
        break;
    default:
        break;
    }
}
