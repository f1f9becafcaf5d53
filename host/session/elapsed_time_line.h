// "  working… 3.2 s" on a terminal while a calculation runs for more than a second, so a long
// call is seen to be alive; the line is cleared when the calculation ends. Nothing at all when the
// stream is not a terminal: logs and pipes get no progress noise.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace vdhost {

class ElapsedTimeLine {
public:
    explicit ElapsedTimeLine(int fd);  // starts showing after a second if fd is a terminal
    ~ElapsedTimeLine();                // clears the line if it was shown
    ElapsedTimeLine(const ElapsedTimeLine&) = delete;
    ElapsedTimeLine& operator=(const ElapsedTimeLine&) = delete;

private:
    void show();

    int fd_;
    std::mutex mutex_;
    std::condition_variable stopped_;
    bool done_ = false;
    std::thread thread_;  // last: started once everything it uses is made
};

}  // namespace vdhost
