#include "options.h"

#include "api/text_codec.h"

#include <cstdlib>
#include <map>

namespace vdhost::cli {

namespace {

const char* kGeneralHelp =
    "usage: vdhost [options] COMMAND [arguments]\n"
    "\n"
    "Commands:\n"
    "  eval EXPR              evaluate a calculation and show its result\n"
    "  run SCRIPT             run a script file (- for standard input)\n"
    "  repl                   evaluate statements typed at a prompt\n"
    "  set TABLE::FIELD EXPR  store a calculation's result into a field\n"
    "  get TABLE::FIELD       show a field\n"
    "  define TABLE::FIELD KIND  make a field of kind text, number or container\n"
    "  fields                 list the database's fields and their kinds\n"
    "  new-record TABLE       make a record of the table and make it current\n"
    "  goto TABLE ID          make a record of the table current\n"
    "  records TABLE          list the table's records\n"
    "  functions              list the functions the plug-ins registered\n"
    "  serve [--port N] [--allow-calculations]  show the database in a web browser\n"
    "  help [COMMAND]         show this text, or a command's\n"
    "\n"
    "Options:\n"
    "  --db FILE              the database file (default: Untitled.vddb in the current folder)\n"
    "  --plugins DIR          load plug-ins from DIR (may be repeated; default: the build's or the\n"
    "                         installed plug-in folder)\n"
    "  --no-plugins           load no plug-ins\n"
    "  --remote HOST          present the database as hosted on HOST\n"
    "  --interface-version N  the interface version told to plug-ins (default 52)\n"
    "  --host-version TEXT    the version text told to plug-ins (default \"ProAdvanced 11.0v3\")\n"
    "  --raw                  show carriage returns as they are\n"
    "  --out FILE             also write the result into FILE (text, or a container's first stream)\n"
    "  -h, --help             show help (after a command: that command's help)\n"
    "\n"
    "Exit status: 0 when the calculation ran (whatever status text a function answered), 1 for a bad\n"
    "command line, 2 when a calculation did not parse or evaluate, 3 when a plug-in function answered\n"
    "an error code, 4 for database or file trouble (such as a value its field cannot hold), 130 or\n"
    "143 when Ctrl-C (SIGINT) or SIGTERM ended the command; the statement it was running stored\n"
    "nothing.\n";

const std::map<std::string, std::string>& commandHelp() {
    static const std::map<std::string, std::string> help = {
        {"eval", "usage: vdhost [options] eval EXPR\n\nEvaluates the calculation EXPR and shows its result: text and numbers as text,\n"
                 "a container as one line per stream with its type and size. With --out FILE the\n"
                 "result is also written into FILE.\n"},
        {"run", "usage: vdhost [options] run SCRIPT\n\nRuns a script, one statement per line; a statement goes on while a text, a\n"
                "comment or a parenthesis is open.\n\n"
                "  # comment\n  $name := calculation\n  $$name := calculation\n  Table::Field := calculation\n"
                "  print calculation\n  write PATH calculation\n  define Table::Field KIND\n  calculation\n\n"
                "The script stops at the first statement that fails; the message names the line.\n"},
        {"repl", "usage: vdhost [options] repl\n\nReads statements (as in scripts) at a prompt, with line editing and history\n"
                 "(kept in ~/.vdhost_history, written after every statement). Errors are shown and\n"
                 "the prompt goes on. Ctrl-C ends the running calculation (the statement stores\n"
                 "nothing) or drops the line being typed. End with Ctrl-D or \"exit\". Plug-ins get\n"
                 "idle time while the prompt waits.\n"},
        {"set", "usage: vdhost [options] set TABLE::FIELD EXPR\n\nEvaluates EXPR and stores the result into the field of the table's current\n"
                "record; table and field are made when missing, a new field taking the kind of\n"
                "its first value. Evaluation and store are one write transaction, so parallel\n"
                "sets of \"T::C + 1\" all count. A value the field's kind cannot hold is refused\n"
                "(status 4) and the field keeps what it held.\n"},
        {"get", "usage: vdhost [options] get TABLE::FIELD\n\nShows the field of the table's current record (--out FILE writes it).\n"},
        {"define", "usage: vdhost [options] define TABLE::FIELD KIND\n\nMakes a field of kind text, number or container, or changes the kind of a\n"
                   "field that holds no data yet (store \"\" into it to empty it).\n"},
        {"fields", "usage: vdhost [options] fields\n\nLists the fields of the database, one \"TABLE::FIELD<tab>KIND\" per line, in the\n"
                   "order they were made.\n"},
        {"new-record", "usage: vdhost [options] new-record TABLE\n\nMakes a record of the table (and the table, when missing), makes it the current\n"
                       "record and shows its id. Calculations read and store the fields of a table's\n"
                       "current record; it stays current for later commands until another is made\n"
                       "or chosen. In calculations: NewRecord ( \"TABLE\" ).\n"},
        {"goto", "usage: vdhost [options] goto TABLE ID\n\nMakes the record ID of the table current (status 4 when the table has no such\n"
                 "record). In calculations: GoToRecord ( \"TABLE\" ; ID ).\n"},
        {"records", "usage: vdhost [options] records TABLE\n\nLists the ids of the table's records, one per line in the order they were made;\n"
                    "the current one is followed by a tab and \"current\".\n"},
        {"functions", "usage: vdhost [options] functions\n\nLists the registered functions: plug-in, id, name, argument counts, flags\n"
                      "and prototype.\n"},
        {"serve", "usage: vdhost [options] serve [--port N] [--allow-calculations]\n\n"
                  "Shows the database in a web browser: its tables, each table's records, a record's\n"
                  "page, with pictures, sounds (a waveform and a player) and files of container\n"
                  "fields. Listens on 127.0.0.1 only, port N (default 8080; 0 for any free port),\n"
                  "and prints the address to open: it carries a random token, without which every\n"
                  "request is refused. Read-only unless --allow-calculations, which puts a\n"
                  "calculation box on each page (statements as at the prompt, such as\n"
                  "Table::Field := calculation). Runs until Ctrl-C or SIGTERM.\n"},
        {"help", "usage: vdhost help [COMMAND]\n"},
    };
    return help;
}

}  // namespace

std::string helpText(const std::string& command) {
    auto it = commandHelp().find(command);
    return it == commandHelp().end() ? kGeneralHelp : it->second;
}

Options parseOptions(int argc, char** argv) {
    Options o;
    auto value = [&](int& i, const std::string& name) -> std::string {
        if (i + 1 >= argc) throw UsageError(name + " needs a value");
        return argv[++i];
    };
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--db") {
            o.session.database = value(i, a);
        } else if (a == "--plugins") {
            o.session.pluginFolders.emplace_back(value(i, a));
        } else if (a == "--no-plugins") {
            o.session.loadPlugins = false;
        } else if (a == "--remote") {
            o.session.remoteHost = value(i, a);
        } else if (a == "--interface-version") {
            std::string v = value(i, a);
            char* end = nullptr;
            long n = std::strtol(v.c_str(), &end, 10);
            if (v.empty() || *end || n < -32768 || n > 32767) throw UsageError("--interface-version needs a 16-bit number");
            o.session.identity.interfaceVersion = static_cast<int16_t>(n);
        } else if (a == "--host-version") {
            o.session.identity.versionText = utf8ToUtf16(value(i, a));
        } else if (a == "--port") {
            std::string v = value(i, a);
            char* end = nullptr;
            long n = std::strtol(v.c_str(), &end, 10);
            if (v.empty() || *end || n < 0 || n > 65535) throw UsageError("--port needs a port number from 0 to 65535");
            o.port = static_cast<int>(n);
        } else if (a == "--allow-calculations") {
            o.allowCalculations = true;
        } else if (a == "--raw") {
            o.raw = true;
        } else if (a == "--out") {
            o.outFile = value(i, a);
        } else if (a == "-h" || a == "--help") {
            o.help = true;
        } else if (a.size() > 1 && a[0] == '-' && o.command.empty()) {
            throw UsageError("unknown option " + a);
        } else if (o.command.empty()) {
            o.command = a;
        } else {
            o.arguments.push_back(a);
        }
    }
    return o;
}

}  // namespace vdhost::cli
