#include "session.h"

#include "api/text_codec.h"
#include "calc/expression.h"
#include "calc/interruption.h"
#include "elapsed_time_line.h"

#include <optional>

#include <unistd.h>

namespace vdhost {

namespace fs = std::filesystem;

Session::Session(SessionOptions options)
    : options_(std::move(options)), database_(options_.database), previousHost_(EvaluationHost::current()) {
    exprEnv_.host = this;
    // Plug-ins may evaluate calculations from their start-up on.
    EvaluationHost::setCurrent(this);
    if (!options_.loadPlugins) return;
    auto folders = options_.pluginFolders.empty() ? PluginSet::defaultFolders() : options_.pluginFolders;
    for (const auto& folder : folders) plugins_.loadFolder(folder, options_.identity, problems_);
}

Session::~Session() {
    plugins_.unloadAll();
    EvaluationHost::setCurrent(previousHost_);
}

FMX_Data Session::evaluate(std::u16string_view text, calc::Variables& locals, int line, int column) {
    auto expression = calc::Expression::parse(text, line, column);
    std::optional<ElapsedTimeLine> elapsed;
    if (options_.showElapsedTime && evaluating_ == 0) elapsed.emplace(STDERR_FILENO);
    struct Count {
        int& n;
        explicit Count(int& counter) : n(counter) { ++n; }
        ~Count() { --n; }
    } count(evaluating_);
    return expression->evaluate(*this, locals);
}

FMX_ErrCode Session::evaluate(std::u16string_view expression, FMX_Data& result) {
    calc::Variables locals;
    try {
        result = evaluate(expression, locals);
        return FMX_NO_ERROR;
    } catch (const calc::CalcError& e) {
        return e.kind == calc::CalcError::Kind::Handler ? static_cast<FMX_ErrCode>(e.handlerCode)
                                                        : FMX_ErrCode{FMX_ERR_CALCULATION};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return FMX_ERR_CALCULATION;
    }
}

void Session::evaluateInto(std::string_view table, std::string_view field, std::u16string_view text,
                           calc::Variables& locals, int line, int column) {
    db::Database::Statement statement(database_);
    FMX_Data value = evaluate(text, locals, line, column);
    calc::throwIfInterrupted();
    database_.write(table, field, value);
    calc::throwIfInterrupted();  // the last moment at which the statement can still keep nothing
    statement.commit();
}

std::optional<FMX_Data> Session::field(std::string_view table, std::string_view field) {
    return database_.read(table, field);
}

std::u16string Session::filePath() {
    fs::path path = fs::absolute(database_.path()).lexically_normal();
    if (options_.remoteHost)
        return utf8ToUtf16("fmnet:/" + *options_.remoteHost + "/" + path.filename().string());
    return utf8ToUtf16("file:" + path.string());
}

}  // namespace vdhost
