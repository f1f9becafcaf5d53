#include "container/database_location.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "fmapi/args/host_exprenv.h"
#include "fmapi/args/host_text.h"
#include "platform/fs/path_resolver.h"
#include "util/status_codes.h"

#include <fmx/fmx.h>

#include <filesystem>

namespace vd::container {

namespace {
constexpr size_t kPathLimit = 4096;
}

std::optional<std::string> DatabasePath() {
    fmapi::OwnedExprEnv env(fmapi::NewExprEnv(0));
    fmapi::OwnedText expression;
    fmapi::TextAssign(expression.get(), "Get(FilePath)", FMX_ENCODING_NATIVE);
    fmapi::OwnedData answer(fmapi::NewData());
    if (fmapi::ExprEnvEvaluate(env.get(), expression.get(), answer.get()) != 0) return std::nullopt;
    std::string path = ArgCText(fmapi::DataGetAsText(answer.get()));
    if (path.size() >= kPathLimit) path.resize(kPathLimit - 1);
    return path;
}

bool IsRemoteDatabasePath(std::string_view path) { return path.size() > 4 && path.substr(0, 5) == "fmnet"; }

int DatabaseLocation(std::string& folder) {
    auto path = DatabasePath();
    if (!path) return util::kMemoryFull;
    if (IsRemoteDatabasePath(*path)) return kRemoteDatabase;
    util::FileLocation location;
    if (util::Status s = util::ResolvePath(location, *path, false, std::string())) return s;
    folder = std::filesystem::path(util::FullPath(location)).parent_path().string();
    return kLocalDatabase;
}

int ResolveAgainstDatabase(std::string_view text, util::FileLocation& location) {
    std::string folder;
    int where = DatabaseLocation(folder);
    if (where == kRemoteDatabase) return util::ResolvePath(location, text, false, std::string());
    if (where != kLocalDatabase) return where;
    return util::ResolvePath(location, text, true, folder);
}

}  // namespace vd::container
