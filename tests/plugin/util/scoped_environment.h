// Sets an environment variable for one test and puts back what was there, so that tests which
// move HOME, TZ or VANDREL_DRIVES cannot leak into the next test.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace vdtest {

class ScopedEnvironment {
public:
    // A missing value unsets the variable.
    ScopedEnvironment(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) previous_ = old;
        Apply(value);
    }
    ~ScopedEnvironment() { Apply(previous_); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void Apply(const std::optional<std::string>& value) {
        if (value) setenv(name_.c_str(), value->c_str(), 1);
        else unsetenv(name_.c_str());
        if (name_ == "TZ") tzset();
    }

    std::string name_;
    std::optional<std::string> previous_;
};

}  // namespace vdtest
