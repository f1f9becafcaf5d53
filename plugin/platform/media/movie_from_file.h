// Opening a media file as a movie: every audio stream a sound track, video streams visual
// tracks, subtitle streams text tracks. PCM in WAV, AIFF, CAF, AU and Wave64 stays in the file
// and is read on demand; everything else is decoded when read.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

#include <string>

namespace vd::media {

struct PredecodedSound;

struct OpenOptions {
    // What decoding the file's one compressed sound stream gives (a file just written by
    // ExportSound): the movie reads it instead of decoding the file again.
    PredecodedSound* predecoded = nullptr;
    // MP3 states a length with its encoder's padding in it; the exact length takes decoding the
    // whole file at open. A sound that is only to be played takes the stated length (a few
    // hundredths of a second of silence too long at its end) and starts at once.
    bool exactLength = true;
    // A reference movie (one whose first text track says "This file has no preview", written
    // beside a sound by Vandrel_InsertQuickTime) stands for the file its sound track refers to.
    // Followed by the container layer's movie arguments; MovieFromFile itself opens what it is given.
    bool followReferenceMovies = true;
};

// util::kFileNotFound (-43), util::kPermissionDenied (-54), util::kNotAFile (-1302) for a folder, util::kMovieNotFound
// (-2048) for an empty, truncated, corrupt or non-media file. A file with no sound opens;
// callers that need sound check FirstSoundTrack (util::kNoSoundTrack).
// Plain PCM WAV files are read without the media libraries (plain_wav.h).
Status MovieFromFile(const std::string& path, Movie& movie, const OpenOptions& options = {});

// The same through the libraries alone, whatever the file: what MovieFromFile falls back to.
// How many frames MovieFromFile gives the sound of a file with one sound stream whose decoding
// gives decodedFrames: the length its container states, or the decoded length where the stated
// one cannot be trusted. Reads the file's header only.
Status StatedSoundFrames(const std::string& path, int64_t decodedFrames, int64_t& frames);

Status MovieFromFileByLibraries(const std::string& path, Movie& movie, const OpenOptions& options = {});

}  // namespace vd::media
