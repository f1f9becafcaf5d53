// A sound's waveform as a picture: the whole sound or a time range of it, one track, one channel
// or all of them, in given colours.
#pragma once

#include "platform/graphics/pixel_buffer.h"
#include "platform/media/movie.h"
#include "sound/waveform/waveform_drawing.h"
#include "sound/waveform/waveform_selector.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vd::sound {

struct WaveformRequest {
    WaveformSelection selection;
    int32_t width = 0, height = 0;
    std::optional<uint32_t> start, end;  // unsigned 16.16 seconds; without either the whole sound
    WaveformColors colors;
};

struct WaveformOutcome {
    int32_t code = 0;
    std::string message;  // "" for the code's own message
};

// The picture size is checked before anything is read: -50 for a side below 1, -108 for a side or
// an area beyond what a pixel buffer holds. Used by the function before it opens the sound.
int32_t CheckWaveformSize(int32_t width, int32_t height);

// Draws the requested waveform of movie (which is consumed: the range copy and the PCM conversion
// replace it) into picture. Failures: "Could not extract movie selection." (the range), "Could not
// convert sound." (to PCM), -2055 (no sound track) or -2028 (no such track), -4 for 8-bit 'raw '
// samples and -2001 for other samples than 16-bit PCM, -205 for a channel the sound does not have,
// -50 for a height that leaves no plotting row in a band, -108 without memory for the picture,
// "Could not display waveform." when the samples cannot be read. An empty range draws the bands
// without a curve. Temporary files made on the way are gone when this returns.
WaveformOutcome DrawWaveform(media::Movie movie, const WaveformRequest& request,
                             std::optional<platform::PixelBuffer>& picture);

}  // namespace vd::sound
