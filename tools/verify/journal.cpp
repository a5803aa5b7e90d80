#include "verify/journal.h"

#include <chrono>
#include <exception>
#include <utility>

#include <nlohmann/json.hpp>

namespace dialwright::verify {
namespace {

using Json = nlohmann::json;

Verdict CarryOut(const std::function<Verdict()>& step) {
    try {
        return step();
    } catch (const std::exception& error) {
        return Failed(error.what());
    }
}

}  // namespace

const char* NameOf(Result result) {
    switch (result) {
        case Result::Passed: return "passed";
        case Result::Failed: return "failed";
        case Result::Skipped: break;
    }
    return "skipped";
}

Verdict Passed(std::string found) { return {.result = Result::Passed, .found = std::move(found)}; }
Verdict Failed(std::string found) { return {.result = Result::Failed, .found = std::move(found)}; }
Verdict Skipped(std::string why) { return {.result = Result::Skipped, .found = std::move(why)}; }
Verdict PassedIf(bool good, std::string found) { return good ? Passed(std::move(found)) : Failed(std::move(found)); }

Journal::Journal(const std::filesystem::path& path) : file(path, std::ios::binary | std::ios::app) {}

void Journal::Do(const std::string& name, const std::function<Verdict()>& step) {
    Write(Json{{"begin", name}}.dump());
    const auto begin = std::chrono::steady_clock::now();
    const Verdict verdict = CarryOut(step);
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
    const Json line = {
        {"name", name}, {"result", verdict.result}, {"found", verdict.found}, {"milliseconds", spent.count()}};
    Write(line.dump(-1, ' ', false, Json::error_handler_t::replace));
}

void Journal::Write(const std::string& line) { file << line << '\n' << std::flush; }

JournalContent ReadJournal(const std::filesystem::path& path) {
    JournalContent content;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        const Json json = Json::parse(line, nullptr, false);
        if (json.is_discarded()) continue;  // the check was ended while it wrote
        if (json.contains("begin")) {
            content.unfinished = json["begin"];
            continue;
        }
        content.unfinished.clear();
        content.steps.push_back({.name = json["name"],
                                 .verdict = {.result = json["result"].get<Result>(), .found = json["found"]},
                                 .milliseconds = json["milliseconds"]});
    }
    return content;
}

}  // namespace dialwright::verify
