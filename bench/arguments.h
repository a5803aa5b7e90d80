#pragma once

#include <map>
#include <string>
#include <vector>

namespace dialwright::bench {

/// The command line of a benchmark: options with one value each. Ends the program with its usage: on --help with exit
/// code 0, on an option or a value that it cannot use with 2.
class Arguments {
public:
    Arguments(int count, char** values, std::string usageText, std::vector<std::string> known);

    /// The value of an option that must be there.
    [[nodiscard]] std::string Text(const std::string& option) const;

    /// The same as a number above zero.
    [[nodiscard]] int Number(const std::string& option) const;

    [[noreturn]] void Refuse(const std::string& what) const;

private:
    std::string usage;
    std::map<std::string, std::string> given;
};

}  // namespace dialwright::bench
