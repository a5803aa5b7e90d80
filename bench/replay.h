#pragma once

#include <string>
#include <vector>

namespace dialwright::bench {

/// What a command has written to standard output, message by message, to be written again with nothing in between.
class Replay {
public:
    /// Takes what the file holds from the offset on. A message begins where a line does not begin with a blank.
    Replay(const std::string& path, std::size_t offset);

    /// Each message by one bare write to the file behind standard output.
    void Write() const;

    [[nodiscard]] std::size_t Messages() const { return messages.size(); }

private:
    std::vector<std::string> messages;
};

/// The size of the file that standard output is.
[[nodiscard]] std::size_t BytesWritten();

}  // namespace dialwright::bench
