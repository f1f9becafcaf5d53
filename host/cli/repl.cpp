// vdhost repl: statements typed at a prompt, with line editing and history. While the prompt waits,
// the plug-ins get idle time every 100 ms, as a host application's event loop would give them.
// Ctrl-C ends the running calculation, or drops the line being typed, and the prompt goes on.
#include "commands.h"

#include "api/text_codec.h"
#include "calc/expression.h"
#include "calc/interruption.h"
#include "session/script.h"

#include <editline/readline.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <csignal>
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

// SIGTERM ends the prompt as it ends any command; SIGINT is the user's to take back.
void endIfTerminated() {
    if (calc::interruptionSignal() == SIGTERM) calc::throwIfInterrupted();
}

// Takes a pending Ctrl-C: true if there was one.
bool takeCtrlC() {
    if (calc::interruptionSignal() != SIGINT) return false;
    calc::clearInterruption();
    return true;
}

struct Input {
    std::optional<std::string> line;  // nullopt at the end of input or after Ctrl-C
    bool cancelled = false;           // Ctrl-C: drop what was typed so far
};

// Waits for a line while giving the plug-ins idle time.
Input readLine(Session& session, const char* prompt, bool interactive) {
    if (!interactive) {
        std::string line;
        session.plugins().idle(0);
        if (!std::getline(std::cin, line)) return {};
        return {line};
    }
    gLine.reset();
    gEnd = false;
    bool cancelled = false;
    rl_callback_handler_install(prompt, lineHandler);
    while (!gLine && !gEnd && !cancelled) {
        pollfd fd{STDIN_FILENO, POLLIN, 0};
        int ready = poll(&fd, 1, kIdleMilliseconds);
        endIfTerminated();
        if (takeCtrlC()) {
            rl_replace_line("", 0);
            cancelled = true;
        } else if (ready > 0) {
            rl_callback_read_char();
        } else {
            session.plugins().idle(0);
        }
    }
    rl_callback_handler_remove();
    if (gEnd || cancelled) std::cout << "\n";
    return {gEnd || cancelled ? std::nullopt : gLine, cancelled};
}

}  // namespace

extern "C" int vdhostReplCommand(Session& session, const Options& options) {
    bool interactive = isatty(STDIN_FILENO);
    // Our SIGINT handler decides what Ctrl-C does; the line editor must not put its own in front.
    rl_catch_signals = 0;
    std::string history = historyFile();
    if (interactive && !history.empty()) read_history(history.c_str());
    ScriptRunner runner(session, std::cout, options.raw, "repl");
    std::u16string statement;
    int lineNumber = 0, statementLine = 0;
    for (;;) {
        Input input = readLine(session, statement.empty() ? "vdhost> " : "   ...> ", interactive);
        if (input.cancelled) {
            statement.clear();
            continue;
        }
        if (!input.line) break;
        const std::string& line = *input.line;
        ++lineNumber;
        if (statement.empty()) {
            if (line.find_first_not_of(" \t") == std::string::npos || line[line.find_first_not_of(" \t")] == '#')
                continue;
            if (line == "exit" || line == "quit") break;
            statementLine = lineNumber;
        } else {
            statement += u'\n';
        }
        statement += utf8ToUtf16(line);
        if (calc::needsContinuation(statement)) continue;
        if (interactive) {
            add_history(utf16ToUtf8(statement).c_str());
            // Now, not at the end: a prompt that is killed or crashes keeps what was typed.
            if (!history.empty()) write_history(history.c_str());
        }
        try {
            runner.runStatement(statement, statementLine);
        } catch (const calc::Interrupted&) {
            endIfTerminated();
            calc::clearInterruption();
            std::cerr << "vdhost: Interrupted.\n";
        } catch (const std::exception& e) {
            std::cerr << "vdhost: " << e.what() << "\n";
        }
        statement.clear();
        endIfTerminated();
        takeCtrlC();  // one that came after the statement's last step has nothing left to end
    }
    return kOk;
}

}  // namespace vdhost::cli
