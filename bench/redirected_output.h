#pragma once

#include <string>

namespace dialwright::bench {

/// Standard output goes to a file, in text mode, while this lives.
class RedirectedOutput {
public:
    explicit RedirectedOutput(const std::string& path);
    ~RedirectedOutput();
    RedirectedOutput(const RedirectedOutput&) = delete;
    RedirectedOutput& operator=(const RedirectedOutput&) = delete;

    [[nodiscard]] bool IsThere() const { return isThere; }

private:
    int kept;
    bool isThere = false;
};

}  // namespace dialwright::bench
