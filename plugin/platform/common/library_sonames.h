// The file names (sonames) of the libraries behind the media and graphics layers. The start-up
// check looks for exactly these files and the first use loads exactly these, so the plug-in never
// starts on the strength of one file and then loads another.
#pragma once

namespace vd::platform {

inline constexpr const char* kAvFormatLibrary = "libavformat.so.59";
inline constexpr const char* kAvCodecLibrary = "libavcodec.so.59";
inline constexpr const char* kSwResampleLibrary = "libswresample.so.4";
inline constexpr const char* kAvUtilLibrary = "libavutil.so.57";
// The sound output (platform/audio), loaded when the first sound plays.
inline constexpr const char* kPortAudioLibrary = "libportaudio.so.2";
inline constexpr const char* kVipsLibrary = "libvips.so.42";
// Never loaded by us: Debian's libvips saves JPEG through it, so without it there is no JPEG saver.
inline constexpr const char* kJpegLibrary = "libjpeg.so.62";
// The Mac picture formats libvips lacks (PICT, PSD, SGI, TGA, BMP), loaded when one is first read
// or written.
inline constexpr const char* kMagickCoreLibrary = "libMagickCore-6.Q16.so.6";
// Web images, loaded when the first one is fetched.
inline constexpr const char* kCurlLibrary = "libcurl.so.4";

}  // namespace vd::platform
