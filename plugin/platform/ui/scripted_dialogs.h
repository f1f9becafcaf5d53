// Dialogs answered from a file instead of a person. The file holds one answer a line, taken in
// order, one per dialog:
//
//   choose-folder /path/of/a/folder
//   choose-file /path/of/a/file
//   cancel
//   ok
//   ok rate=22050 channels=mono
//
// "ok" confirms an alert or accepts a settings form as shown; for a form it may be followed by any
// number of name=value pairs, separated by blanks, each of which first moves the named control to
// the choice of that value (names and values are matched without regard to case). "cancel"
// cancels any dialog.
//
// Blank lines and lines starting with "#" are skipped. Where the process stands in the file is
// kept between dialogs and starts again from the top when the file is replaced or changed, so a
// test can write a fresh script before each step.
#pragma once

#include <string>
#include <string_view>

#include "platform/ui/dialog_service.h"

namespace vd::platform::ui {

// Answers the request from the next answer of the file. An answer that does not fit the dialog
// (a file for a folder chooser, "ok" for a chooser, settings for an alert ...), a chosen item that
// is missing or of the wrong kind, a setting the form does not have or a value it does not offer,
// or a script that has run out, fails with a status and a detail that says so.
DialogAnswer AnswerFromScript(const std::string& scriptPath, const DialogRequest& request);
FormAnswer AnswerFromScript(const std::string& scriptPath, const FormRequest& request);

// Takes the script's next answer for the dialog that what names ("the Blur dialog"), or answers
// the failure that stands for it (an unreadable script, one that has run out).
DialogAnswer NextScriptAnswer(const std::string& scriptPath, const std::string& what, std::string& line);

// The answer a single script line gives to the request (no file access but checking the item).
DialogAnswer AnswerFromLine(std::string_view line, const DialogRequest& request);
FormAnswer AnswerFromLine(std::string_view line, const FormRequest& request);

}  // namespace vd::platform::ui
