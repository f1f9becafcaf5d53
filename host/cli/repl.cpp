// vdhost repl: statements typed at a prompt, with line editing and history. While the prompt waits,
// the plug-ins get idle time every 100 ms, as a host application's event loop would give them.
#include "commands.h"

#include "api/text_codec.h"
#include "calc/expression.h"
#include "session/script.h"

#include <editline/readline.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <optional>

namespace vdhost::cli {

namespace {

constexpr int kIdleMilliseconds = 100;

std::string historyFile() {
    const char* home = std::getenv("HOME");
    return home ? std::string(home) + "/.vdhost_history" : std::string();
}

// readline's callback interface hands lines to a plain function; this is where they land.
std::optional<std::string> gLine;
bool gEnd = false;

void lineHandler(char* line) {
    if (!line) {
        gEnd = true;
        return;
    }
    gLine = line;
    std::free(line);
}

// Waits for a line while giving the plug-ins idle time; nullopt at the end of input.
std::optional<std::string> readLine(Session& session, const char* prompt, bool interactive) {
    if (!interactive) {
        std::string line;
        session.plugins().idle(0);
        if (!std::getline(std::cin, line)) return std::nullopt;
        return line;
    }
    gLine.reset();
    gEnd = false;
    rl_callback_handler_install(prompt, lineHandler);
    while (!gLine && !gEnd) {
        pollfd fd{STDIN_FILENO, POLLIN, 0};
        int ready = poll(&fd, 1, kIdleMilliseconds);
        if (ready > 0)
            rl_callback_read_char();
        else
            session.plugins().idle(0);
    }
    rl_callback_handler_remove();
    if (gEnd) std::cout << "\n";
    return gEnd ? std::nullopt : gLine;
}

}  // namespace

int replCommand(Session& session, const Options& options) {
    bool interactive = isatty(STDIN_FILENO);
    std::string history = historyFile();
    if (interactive && !history.empty()) read_history(history.c_str());
    ScriptRunner runner(session, std::cout, options.raw, "repl");
    std::u16string statement;
    int lineNumber = 0, statementLine = 0;
    while (auto line = readLine(session, statement.empty() ? "vdhost> " : "   ...> ", interactive)) {
        ++lineNumber;
        if (statement.empty()) {
            if (line->find_first_not_of(" \t") == std::string::npos || (*line)[line->find_first_not_of(" \t")] == '#')
                continue;
            if (*line == "exit" || *line == "quit") break;
            statementLine = lineNumber;
        } else {
            statement += u'\n';
        }
        statement += utf8ToUtf16(*line);
        if (calc::needsContinuation(statement)) continue;
        if (interactive) add_history(utf16ToUtf8(statement).c_str());
        try {
            runner.runStatement(statement, statementLine);
        } catch (const std::exception& e) {
            std::cerr << "vdhost: " << e.what() << "\n";
        }
        statement.clear();
    }
    if (interactive && !history.empty()) write_history(history.c_str());
    return kOk;
}

}  // namespace vdhost::cli
