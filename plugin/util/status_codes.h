// Every status code the plug-in answers, named once. Most are the Mac result codes users already
// know from the message table, so a failure reads the same whichever layer found it; the positive
// ones are the plug-in's own and always come with a message. The libraries' errors become these
// codes in one place per library (platform/media/errors.cpp, platform/graphics, platform/fs).
#pragma once

#include <cstdint>

namespace vd::util {

using Status = int16_t;

inline constexpr Status kNoError = 0;
inline constexpr Status kUnknownError = -1;
inline constexpr Status kUnknownError2 = -2;
inline constexpr Status kUnimplemented = -4;       // unimpErr: a feature or format not supported
inline constexpr Status kDiskFull = -34;
inline constexpr Status kNoSuchVolume = -35;       // volume, drive or network share not mounted
inline constexpr Status kIoError = -36;            // the file system failed in a way we cannot name
inline constexpr Status kBadName = -37;            // a name or path the file system cannot take
inline constexpr Status kEndOfFile = -39;
inline constexpr Status kFileNotFound = -43;       // even the folder that should hold the item is missing
inline constexpr Status kDiskLocked = -46;         // a read-only file system
inline constexpr Status kFileBusy = -47;
inline constexpr Status kAlreadyExists = -48;      // dupFNErr
inline constexpr Status kBadParameter = -50;       // paramErr: missing or malformed argument
inline constexpr Status kPermissionDenied = -54;   // a folder on the way may not be searched
inline constexpr Status kMemoryFull = -108;        // also for sizes too large to hold
inline constexpr Status kFolderNotFound = -120;    // base folder missing, or ".." climbs above it
inline constexpr Status kUserCancelled = -128;     // the user cancelled, or the process was told to stop
inline constexpr Status kNoSoundOutput = -200;     // noHardwareErr: no sound output device to play on
inline constexpr Status kDeviceBusy = -227;       // a recording already holds the sound input
inline constexpr Status kBadChannel = -205;        // a channel the sound does not have
inline constexpr Status kBadSoundFormat = -206;    // a "snd " resource we cannot read
inline constexpr Status kBadSoundFileFormat = -208; // badFileFormat: sound data corrupt mid-way
inline constexpr Status kNotAFile = -1302;         // a folder where a file was expected
inline constexpr Status kFileTooLarge = -1309;     // fileBoundsErr: past what a WAV header holds
inline constexpr Status kNotAFolder = -1407;       // the item that should hold the target is a file
inline constexpr Status kCorruptData = -2001;      // no image or sound description we read; samples the caller cannot process
inline constexpr Status kNoCodec = -2003;          // cantFindHandler: no decoder or demuxer
inline constexpr Status kGestaltUndefined = -5551;  // gestaltUndefSelectorErr: the media layer's version is unknown
inline constexpr Status kNoComponent = -2005;      // badComponentType: no loader, saver or exporter
inline constexpr Status kInvalidMedia = -2008;
inline constexpr Status kInvalidTrack = -2009;
inline constexpr Status kWrongState = -3155;       // a recording asked to do what its state does not allow
inline constexpr Status kInvalidMovie = -2010;     // a movie object that cannot do what was asked
inline constexpr Status kInvalidTime = -2015;      // a time or range outside the movie
inline constexpr Status kTagNotFound = -2026;     // a metadata tag the file does not hold
inline constexpr Status kNoSuchTrack = -2028;
inline constexpr Status kMovieNotFound = -2048;    // noMovieFound: not a readable media file
inline constexpr Status kFeatureUnsupported = -2053;
inline constexpr Status kNoSoundTrack = -2055;     // noSoundTrackInMovieErr
inline constexpr Status kInternalComponentError = -2070; // a library failed in its own work
inline constexpr Status kNoSoundStream = -2114;    // a container without a "snd " stream

inline constexpr Status kContainerData = 555;      // container data where a path belongs
inline constexpr Status kWrongArgumentCount = 20100;
inline constexpr Status kNotText = 20102;
inline constexpr Status kUnknownFolderCode = 20103;
inline constexpr Status kTargetExists = 20200;
inline constexpr Status kNotImageOrPath = 20400;   // the container holds no stream of the kind asked for

}  // namespace vd::util
