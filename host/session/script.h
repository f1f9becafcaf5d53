// vdhost scripts: one statement per line (a statement continues on the next line while a text, a
// comment or a parenthesis is open).
//
//   # a comment
//   $name := calculation          a local variable of the script
//   $$name := calculation         a global variable of the session
//   Table::Field := calculation   store into a field of the current record
//   print calculation             show the result
//   write PATH calculation        write the result into a file (PATH: a word, or a quoted text)
//   define Table::Field KIND      make a field of kind text, number or container
//   calculation                   show the result, as print does
#pragma once

#include "calc/context.h"
#include "session.h"

#include <functional>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>

namespace vdhost {

// A statement that failed, with the position in the script and the kind of failure.
class ScriptError : public std::runtime_error {
public:
    enum class Kind { Syntax, Calculation, Handler, File };
    ScriptError(Kind k, const std::string& message) : std::runtime_error(message), kind(k) {}
    Kind kind;
};

class ScriptRunner {
public:
    ScriptRunner(Session& session, std::ostream& out, bool raw, std::string name = "-");

    // Runs statements until the end or the first failure (thrown as ScriptError whose message starts
    // with "NAME:LINE:"). Idle time is given to the plug-ins between statements.
    void run(std::istream& in, const std::string& name);

    // One complete statement that starts on the given line.
    void runStatement(const std::u16string& statement, int line);

    calc::Variables& locals() { return locals_; }

private:
    void show(const FMX_Data& value);

    Session& session_;
    std::ostream& out_;
    bool raw_;
    calc::Variables locals_;
    std::string name_ = "-";
};

// Converts calculation failures into ScriptErrors that carry the script name.
ScriptError scriptErrorFrom(const std::exception& e, const std::string& name);

}  // namespace vdhost
