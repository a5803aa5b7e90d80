#include "trace_reader/trace_line.h"

#include <cstdlib>
#include <ctime>

#include "target.h"
#include "trace/levels.h"
#include "trace/line_builder.h"
#include "trace/settings_word.h"
#include "trace_reader/filter.h"

// What the logger writes, the reader must read back; and it reads anything.
namespace dialwright::fuzz {
namespace {

constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
// As far as the platform's clock goes.
constexpr std::int64_t kLastSecond = 910'692'730'085;
// A year of four digits, as the reader knows it.
constexpr std::int64_t kLastReadSecond = 253'402'300'799;

SecondText AnySecond(Input& input, std::int64_t seconds) {
    const std::tm time = BreakDown(seconds);
    const std::time_t same = seconds;
    std::tm expected{};
    ::gmtime_r(&same, &expected);
    Require(time.tm_year == expected.tm_year && time.tm_mon == expected.tm_mon && time.tm_mday == expected.tm_mday &&
                time.tm_hour == expected.tm_hour && time.tm_min == expected.tm_min && time.tm_sec == expected.tm_sec,
            "a time is broken down as the C library does it");
    return TextOfSecond(time, input.Between(-14L * 60, 14L * 60) * 60);
}

void CheckViews(std::string_view line, const tools::TraceFields& fields) {
    for (const std::string_view view : {fields.time, fields.zone, fields.logger, fields.function, fields.message}) {
        const bool isInside = view.data() >= line.data() && view.data() + view.size() <= line.data() + line.size();
        Require(view.empty() || isInside, "every field lies in the line");
    }
    Require(line.ends_with(fields.message), "the message is the end of the line");
    Require(fields.time.empty() || (fields.time.size() == 27 && fields.zone.size() == 9), "a time has its length");
}

void CheckWhole(const LineSource& source, std::int64_t seconds, std::uint32_t fraction, std::string_view message,
                const tools::TraceFields& fields) {
    Require(fields.process == 4312U && fields.thread == 8876U, "the process and the thread come back");
    Require(fields.logger == "Dialwright", "the logger comes back");
    Require(fields.number == static_cast<std::uint32_t>(source.sourceLine), "the number comes back");
    Require(std::string(source.levelText).ends_with(NameOf(fields.level.value())), "the level comes back");
    const std::string told = fields.function.empty() ? "" : std::string(fields.function) + ": ";
    Require(told + std::string(fields.message) == message, "function and message are the message");
    const auto instant = InstantOf(fields);
    Require(instant.has_value(), "the time comes back");
    const std::int64_t utc = *instant / 10'000'000;
    Require(std::llabs(utc - seconds) <= 14 * 3600 + 1, "as an instant that its zone has moved");
    Require(fields.time.ends_with(std::to_string(fraction)), "with its fraction");
}

void CheckFilter(Input& input, std::string_view line, const tools::TraceFields& fields) {
    tools::Filter filter;
    Require(filter.Judge(fields, line) == tools::Verdict::Shown, "a filter that asks for nothing shows all");
    filter.text = input.Bytes(8);
    filter.function = input.Bytes(8);
    filter.since = tools::TimeBound::Read(input.Bytes(30));
    filter.until = tools::TimeBound::Read(input.Bytes(30));
    (void)filter.Judge(fields, line);
    if (fields.time.empty()) return;
    for (const std::size_t length : {std::size_t{10}, std::size_t{16}, std::size_t{19}, std::size_t{27}}) {
        const auto bound = tools::TimeBound::Read(fields.time.substr(0, length));
        Require(bound && bound->Compare(fields.time) == 0, "a line's own time, cut to any precision, is a bound");
    }
}

}  // namespace

void Try(Input input) {
    static LoggerState logger;
    const bool isWhole = input.Flag();
    const std::uint64_t anySettings = input.Any<std::uint32_t>();
    logger.settings = isWhole ? kSettingsAtStart : anySettings;
    logger.loggerName.Assign("Dialwright");
    logger.nameIsShown = true;
    const auto seconds = input.Between(-kSecondsFrom1601To1970, kLastSecond);
    const auto fraction = input.Between(0U, 9'999'999U);
    const SecondText second = AnySecond(input, seconds);
    const LevelRow& level = input.OneOf(kLevelRows);
    const LineSource source{.sourceLine = level.sourceLine, .levelText = level.text, .format = "%s"};
    tools::Filter filter;
    std::string words = input.Bytes(60);
    const std::string raw = input.Bytes(200);
    CheckFilter(input, raw, tools::ReadFields(raw));
    CheckViews(raw, tools::ReadFields(raw));
    std::erase(words, '\0');
    if (input.Between(0, 20) == 0) words.resize(kMessageBytes, 'x');

    LineArea area;
    const FormatArg argument = words.c_str();
    const TimeStamp time{.second = &second, .fraction = fraction};
    const std::string_view line = BuildLine(area, logger, time, source, FormatArgs({&argument, 1}));
    const std::string expected = words.size() < kMessageBytes ? words : words.substr(0, 4092) + "...";
    Require(line.ends_with(expected), "a line ends in its message, or in as much of it as fits");
    const tools::TraceFields fields = tools::ReadFields(line);
    CheckViews(line, fields);
    CheckFilter(input, line, fields);
    if (isWhole && seconds <= kLastReadSecond) CheckWhole(source, seconds, fraction, expected, fields);
}

}  // namespace dialwright::fuzz
