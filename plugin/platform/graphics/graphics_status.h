// The status codes of the graphics layer. Like the movie layer's, they are the Mac media
// framework's own codes, so the image and drawing functions hand them to the message table as
// they are.
#pragma once

#include <cstdint>

namespace vd::platform {

using GraphicsStatus = int16_t;

inline constexpr GraphicsStatus kGraphicsOk = 0;
inline constexpr GraphicsStatus kGraphicsBadParameter = -50;     // paramErr: a size or buffer we cannot use
inline constexpr GraphicsStatus kGraphicsMemoryFull = -108;      // memFullErr
inline constexpr GraphicsStatus kGraphicsCorruptImage = -2001;   // the bytes are no picture we can read
inline constexpr GraphicsStatus kGraphicsNoComponent = -2005;    // badComponentType: no loader or saver
inline constexpr GraphicsStatus kGraphicsInternal = -2070;       // the library failed in its own work

}  // namespace vd::platform
