#include "commands.h"

#include "api/function_registry.h"
#include "api/text_codec.h"
#include "api/values.h"
#include "calc/calc_error.h"
#include "calc/interruption.h"
#include "interrupt_signals.h"
#include "command_modules.h"
#include "session/names.h"
#include "session/script.h"
#include "session/value_output.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace vdhost::cli {

namespace {

int exitFor(ScriptError::Kind kind) {
    switch (kind) {
    case ScriptError::Kind::Handler:
        return kHandler;
    case ScriptError::Kind::File:
        return kFile;
    default:
        return kCalculation;
    }
}

void expectArguments(const Options& o, size_t n) {
    if (o.arguments.size() != n)
        throw UsageError(o.command + " takes " + std::to_string(n) + " argument" + (n == 1 ? "" : "s") +
                         " (see vdhost " + o.command + " --help)");
}

std::pair<std::string, std::string> fieldName(const std::string& text) {
    auto name = splitFieldName(text);
    if (!name) throw UsageError("expected TABLE::FIELD, not " + text);
    return *name;
}

void showResult(const FMX_Data& value, const Options& o) {
    std::cout << displayText(value, o.raw) << '\n';
    if (o.outFile) writeFileAtomically(*o.outFile, *outputBytes(value, o.raw));
}

std::string flagsText(uint32_t flags) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "0x%04X", flags);
    return buf;
}

// One block per plug-in: its name, description and options string, then its functions in the order
// they were registered.
int listFunctions(Session& session) {
    auto all = FunctionRegistry::instance().all();
    for (const auto& plugin : session.plugins().plugins()) {
        std::cout << utf16ToUtf8(plugin->name()) << " (" << plugin->bundleName() << ".fmxplugin): "
                  << utf16ToUtf8(plugin->description()) << " [" << utf16ToUtf8(plugin->options()) << "]\n";
        for (const auto* f : all) {
            if (f->owner != plugin.get()) continue;
            std::string maxText = f->maxArgs < 0 ? "" : std::to_string(f->maxArgs);
            std::cout << "  " << f->id << "\t" << utf16ToUtf8(f->name) << "\t" << f->minArgs << ".." << maxText
                      << "\t" << flagsText(f->flags) << "\t" << utf16ToUtf8(f->prototype) << "\n";
        }
    }
    if (all.empty()) std::cerr << "vdhost: no functions are registered\n";
    return kOk;
}

// One line per field, "Table::Field<tab>kind", in the order the fields were made.
int listFields(Session& session) {
    for (const auto& f : session.database().fields())
        std::cout << f.table << "::" << f.field << "\t" << db::kindName(f.kind) << "\n";
    return kOk;
}

// A record id as typed: a whole number from 1.
int64_t recordId(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    long long n = std::strtoll(text.c_str(), &end, 10);
    if (text.empty() || *end || errno == ERANGE || n < 1) throw UsageError("a record id is a whole number from 1, not " + text);
    return n;
}

// One line per record, "ID" with "<tab>current" after the current one.
int listRecords(Session& session, const std::string& table) {
    const int64_t current = session.database().currentRecord(table);
    for (int64_t id : session.database().records(table))
        std::cout << id << (id == current ? "\tcurrent" : "") << "\n";
    return kOk;
}

int dispatch(Session& session, const Options& o) {
    const std::string& c = o.command;
    if (c == "eval") {
        expectArguments(o, 1);
        ScriptRunner runner(session, std::cout, o.raw);
        FMX_Data value;
        try {
            value = session.evaluate(utf8ToUtf16(o.arguments[0]), runner.locals());
        } catch (const calc::Interrupted&) {
            throw;
        } catch (const std::exception& e) {
            throw scriptErrorFrom(e, "eval");
        }
        showResult(value, o);
        return kOk;
    }
    if (c == "run") {
        expectArguments(o, 1);
        ScriptRunner runner(session, std::cout, o.raw);
        const std::string& path = o.arguments[0];
        if (path == "-") {
            runner.run(std::cin, "-");
        } else {
            std::ifstream in(path);
            if (!in) throw ScriptError(ScriptError::Kind::File, "cannot read script " + path);
            runner.run(in, path);
        }
        return kOk;
    }
    if (c == "set") {
        expectArguments(o, 2);
        auto [table, field] = fieldName(o.arguments[0]);
        calc::Variables locals;
        try {
            session.evaluateInto(table, field, utf8ToUtf16(o.arguments[1]), locals);
        } catch (const calc::Interrupted&) {
            throw;
        } catch (const calc::CalcError& e) {
            throw scriptErrorFrom(e, "set");
        }
        return kOk;
    }
    if (c == "get") {
        expectArguments(o, 1);
        auto [table, field] = fieldName(o.arguments[0]);
        auto value = session.field(table, field);
        if (!value) throw ScriptError(ScriptError::Kind::File, "no field " + o.arguments[0] + " in " +
                                                                   session.database().path().string());
        showResult(*value, o);
        return kOk;
    }
    if (c == "define") {
        expectArguments(o, 2);
        auto [table, field] = fieldName(o.arguments[0]);
        auto kind = db::parseKind(o.arguments[1]);
        if (!kind) throw UsageError("a field kind is text, number or container, not " + o.arguments[1]);
        session.database().define(table, field, *kind);
        return kOk;
    }
    if (c == "new-record") {
        expectArguments(o, 1);
        std::cout << session.database().newRecord(o.arguments[0]) << "\n";
        return kOk;
    }
    if (c == "goto") {
        expectArguments(o, 2);
        session.database().goToRecord(o.arguments[0], recordId(o.arguments[1]));
        return kOk;
    }
    if (c == "records") {
        expectArguments(o, 1);
        return listRecords(session, o.arguments[0]);
    }
    if (c == "functions") {
        expectArguments(o, 0);
        return listFunctions(session);
    }
    if (c == "fields") {
        expectArguments(o, 0);
        return listFields(session);
    }
    if (c == "serve") {
        expectArguments(o, 0);
        runServeModule(session, o, std::cout);
        return kOk;
    }
    if (c == "repl") {
        expectArguments(o, 0);
        return runReplModule(session, o);
    }
    throw UsageError("unknown command " + c + " (see vdhost --help)");
}

}  // namespace

int runCommand(const Options& o) {
    if (o.help || o.command.empty() || o.command == "help") {
        std::string topic = o.command == "help" && !o.arguments.empty() ? o.arguments[0] : o.command;
        std::cout << helpText(topic == "help" && o.arguments.empty() ? "" : topic);
        return o.command.empty() && !o.help ? kUsage : kOk;
    }
    static const std::vector<std::string> known = {"eval", "run", "repl", "set", "get", "define", "fields", "functions", "serve",
                                                 "new-record", "goto", "records"};
    if (std::find(known.begin(), known.end(), o.command) == known.end())
        throw UsageError("unknown command " + o.command + " (see vdhost --help)");
    // Before any plug-in loads: see interrupt_signals.h.
    installInterruptHandlers(o.command == "repl" ? InterruptPolicy::EndCalculationOnCtrlC : InterruptPolicy::EndCall);
    SessionOptions sessionOptions = o.session;
    sessionOptions.showElapsedTime = true;
    try {
        Session session(sessionOptions);
        for (const auto& problem : session.problems()) std::cerr << "vdhost: " << problem << "\n";
        int status = dispatch(session, o);
        // A signal that came after the last step still ends the command as interrupted.
        calc::throwIfInterrupted();
        return status;
    } catch (const calc::Interrupted& e) {
        std::cerr << "vdhost: " << e.what() << "\n";
        return interruptedStatus(e.signal);
    } catch (const ScriptError& e) {
        std::cerr << "vdhost: " << e.what() << "\n";
        return exitFor(e.kind);
    } catch (const db::DatabaseError& e) {
        std::cerr << "vdhost: " << e.what() << "\n";
        return kFile;
    } catch (const UsageError&) {
        throw;
    } catch (const std::runtime_error& e) {
        std::cerr << "vdhost: " << e.what() << "\n";
        return kFile;
    }
}

}  // namespace vdhost::cli
