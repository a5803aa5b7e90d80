// What the library writes down while this program is its host.

#include <algorithm>
#include <string>

#include "platform/text_encoding.h"
#include "run/own_files.h"
#include "verify/checks.h"
#include "verify/library.h"
#include "verify/own_trace.h"

namespace dialwright::verify {
namespace {

bool Holds(const std::vector<std::string>& lines, std::string_view text) {
    return std::ranges::any_of(lines, [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

}  // namespace

void CheckTrace(const Setting& setting, Journal& journal) {
    const std::filesystem::path host = tools::OwnProgram();
    const std::wstring name = L"Bogus.\x00E9\x3042";
    journal.Do("an error is in the error file before the call returns", [&] {
        const Library library(setting);
        library->validateCommand(name.c_str());
        return PassedIf(Holds(ReadTrace(host, true), "Unknown command: " + ToUtf8(name)), "");
    });
    const std::vector<std::string> lines = ReadTrace(host);
    journal.Do("there is a trace beside the host",
               [&] { return PassedIf(!lines.empty(), std::to_string(lines.size()) + " lines"); });
    journal.Do("every line is whole", [&] {
        const std::string torn = TornLine(lines);
        return PassedIf(torn.empty(), torn);
    });
    journal.Do("foreign letters are UTF-8",
               [&] { return PassedIf(Holds(lines, "Unknown command: " + ToUtf8(name)), ""); });
    journal.Do("it ends with \"trace stopped\" when the library is freed",
               [&] { return PassedIf(HasEndedInOrder(lines), lines.empty() ? "" : lines.back()); });
}

}  // namespace dialwright::verify
