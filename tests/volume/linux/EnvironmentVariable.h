// A variable of the test's own environment that has another value while the object lives.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace ostrevin {

class EnvironmentVariable {
  public:
    EnvironmentVariable(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str())) {
            before_ = before;
        }
        Set(value);
    }
    ~EnvironmentVariable() { Set(before_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void Set(const std::optional<std::string>& value) {
        if (value) {
            setenv(name_.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
        tzset();
    }

    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace ostrevin
