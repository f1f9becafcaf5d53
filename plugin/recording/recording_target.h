// Where Vandrel_RecordSoundStart records, from its first parameter: a file named by a path (made
// when missing, emptied when it exists), a temporary movie file (an empty text or 0), or nowhere
// (any other number, which records nothing and is no error).
#pragma once

#include "sound/temporary_file.h"

#include <fmx/fmx.h>

#include <string>

namespace vd::recording {

struct RecordingTarget {
    enum class Kind { kFile, kTemporary, kNowhere };
    Kind kind = Kind::kNowhere;
    std::string path;
    sound::TemporaryFile temporary;  // kTemporary: the file, removed unless handed on
};

// 0, or the status and the message to report. A file made here for a target that then fails is
// the caller's to remove (made says so).
int32_t ChooseRecordingTarget(const FMX_DataVect* args, RecordingTarget& target, bool& made, std::string& message);

}  // namespace vd::recording
