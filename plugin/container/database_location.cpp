#include "container/database_location.h"

#include "frame/args/arguments.h"
#include "frame/args/host_binary.h"
#include "frame/args/host_data.h"
#include "frame/args/host_exprenv.h"
#include "frame/args/host_text.h"
#include "util/path_resolver.h"

#include <fmx/fmx.h>

#include <filesystem>

namespace vd::container {

namespace {
constexpr size_t kPathLimit = 4096;
}

std::optional<std::string> DatabasePath() {
    host::OwnedExprEnv env(host::NewExprEnv(0));
    host::OwnedText expression;
    host::TextAssign(expression.get(), "Get(FilePath)", FMX_ENCODING_NATIVE);
    host::OwnedData answer(host::NewData());
    if (host::ExprEnvEvaluate(env.get(), expression.get(), answer.get()) != 0) return std::nullopt;
    std::string path = ArgCText(host::DataGetAsText(answer.get()));
    if (path.size() >= kPathLimit) path.resize(kPathLimit - 1);
    return path;
}

bool IsRemoteDatabasePath(std::string_view path) { return path.size() > 4 && path.substr(0, 5) == "fmnet"; }

int DatabaseLocation(std::string& folder) {
    auto path = DatabasePath();
    if (!path) return -108;
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
