// One host session: an open database, the loaded plug-ins, the $$ variables, and the evaluation of
// calculations against them. It is also the evaluation host that plug-ins reach through
// FM_ExprEnv_Evaluate while it is alive.
#pragma once

#include "api/evaluation_host.h"
#include "calc/context.h"
#include "db/database.h"
#include "plugins/plugin_set.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vdhost {

struct SessionOptions {
    std::filesystem::path database = "Untitled.vddb";
    // When set, the database presents itself as hosted on this server ("fmnet:/host/name").
    std::optional<std::string> remoteHost;
    // Empty: PluginSet::defaultFolders().
    std::vector<std::filesystem::path> pluginFolders;
    bool loadPlugins = true;
    HostIdentity identity;
    // Show the time a long calculation has run on standard error, when that is a terminal.
    bool showElapsedTime = false;
};

class Session final : public EvaluationHost, public calc::Context {
public:
    // Opens the database (throws db::DatabaseError) and loads the plug-ins. Problems with single
    // plug-ins do not stop the session; they are listed in problems().
    explicit Session(SessionOptions options);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Evaluates a calculation; throws calc::CalcError.
    FMX_Data evaluate(std::u16string_view text, calc::Variables& locals, int line = 1, int column = 1);

    // Evaluates a calculation and stores its result into a field of the current record, as one
    // write transaction: no other process writes between what the calculation read and the
    // store. Nothing is stored when the calculation fails or is interrupted.
    void evaluateInto(std::string_view table, std::string_view field, std::u16string_view text,
                      calc::Variables& locals, int line = 1, int column = 1);

    db::Database& database() { return database_; }
    PluginSet& plugins() { return plugins_; }
    const std::vector<std::string>& problems() const { return problems_; }

    // EvaluationHost
    FMX_ErrCode evaluate(std::u16string_view expression, FMX_Data& result) override;

    // calc::Context
    std::optional<FMX_Data> field(std::string_view table, std::string_view field) override;
    std::u16string filePath() override;
    calc::Variables& globals() override { return globals_; }
    const FMX_ExprEnv* exprEnv() override { return &exprEnv_; }
    int64_t newRecord(std::string_view table) override { return database_.newRecord(table); }
    void goToRecord(std::string_view table, int64_t record) override { database_.goToRecord(table, record); }
    int64_t currentRecord(std::string_view table) override { return database_.currentRecord(table); }

private:
    SessionOptions options_;
    db::Database database_;
    calc::Variables globals_;
    FMX_ExprEnv exprEnv_;
    EvaluationHost* previousHost_;
    PluginSet plugins_;
    std::vector<std::string> problems_;
    int evaluating_ = 0;  // calculations under way, counting those plug-ins start
};

}  // namespace vdhost
