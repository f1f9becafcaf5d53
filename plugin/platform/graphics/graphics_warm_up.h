// Starting libvips costs tens of milliseconds (loading the library, then its format modules). A
// function that will encode a picture only after long work of its own starts the library on a
// helper thread first, so that the two overlap instead of adding up.
#pragma once

#include <thread>

namespace vd::platform {

class GraphicsWarmUp {
public:
    // Starts the library on a helper thread unless it is running already (or no thread can be had:
    // then the first picture starts it, as usual).
    GraphicsWarmUp();
    // Waits for the helper, so that nothing of it outlives the function that made it.
    ~GraphicsWarmUp();

    GraphicsWarmUp(const GraphicsWarmUp&) = delete;
    GraphicsWarmUp& operator=(const GraphicsWarmUp&) = delete;

private:
    std::thread helper_;
};

}  // namespace vd::platform
