// A sound function's movie together with the temporary WAV file it may live in. When a movie had to
// be converted before it could be worked on, the converted copy lives in a temporary file that
// belongs to whoever holds the movie; keeping the two in one object disposes of the movie first
// (closing its file) and then removes the file, on every path.
#pragma once

#include "platform/media/movie.h"
#include "sound/temporary_file.h"

namespace vd::sound {

struct SoundMovie {
    TemporaryFile backing;  // declared first so that it goes after the movie
    media::Movie movie;

    // A conversion that failed because no temporary file could be made (the temporary folder is
    // missing, full or not safe to use): the functions say so instead of blaming the sound.
    bool temporaryFileFailed = false;

    // The converted flag: the movie is a copy in a temporary WAV file of ours.
    bool Converted() const { return backing.Held(); }
};

// What every sound function answers when it could not make a temporary file, whatever its step's
// own message: the trouble is the temporary folder, not the sound.
inline constexpr char kTemporaryFileMessage[] = "Could not get reference to a temporary file.";

inline const char* UnlessTemporaryFileFailed(bool temporaryFileFailed, const char* stepMessage) {
    return temporaryFileFailed ? kTemporaryFileMessage : stepMessage;
}

}  // namespace vd::sound
