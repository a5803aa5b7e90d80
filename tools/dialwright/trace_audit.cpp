#include <cstdio>
#include <memory>
#include <vector>

#include "check/source_text.h"
#include "input.h"
#include "json_text.h"
#include "platform/text_encoding.h"
#include "printable.h"
#include "trace_commands.h"
#include "trace_formats.h"
#include "trace_output.h"
#include "trace_reader/file_pairs.h"
#include "trace_reader/file_pieces.h"
#include "trace_reader/secret_search.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    std::string secretFile;
    std::vector<std::string> paths;
    bool json = false;
};

/// The files that exist of what is named: of a folder all traces, of a file also the others of its host.
std::vector<std::wstring> FilesOf(const std::string& path) {
    const std::wstring wide = Wide(path);
    std::vector<std::wstring> files;
    const std::vector<TracePair> pairs = IsFolder(wide) ? PairsIn(wide) : std::vector{PairOf(wide)};
    for (const TracePair& pair : pairs) {
        for (const std::wstring& file : IsFolder(wide) ? pair.Files() : MainAndErrorFiles(pair)) {
            if (StateOf(file) != FileState()) files.push_back(file);
        }
    }
    return files;
}

class Audit {
public:
    Audit(const std::vector<Secret>& list, bool asJson) : secrets(list), json(asJson), printer(asJson, "leaks") {}

    /// Whether the file was read to its end.
    bool Read(const std::wstring& file) {
        const std::string name = Printable(file);
        SecretSearch search(secrets, [&](std::uint64_t line, const std::string& secret) { Tell(name, line, secret); });
        FilePieces pieces(file);
        std::string bytes;
        auto outcome = pieces.Next(bytes);
        for (; outcome == FilePieces::Outcome::Bytes; outcome = pieces.Next(bytes)) search.Feed(bytes);
        return outcome == FilePieces::Outcome::End;
    }

    void Finish() { printer.Finish(); }
    [[nodiscard]] bool HasFound() const { return found; }

private:
    void Tell(const std::string& file, std::uint64_t line, const std::string& secret) {
        found = true;
        const std::string name = Printable(secret);
        printer.Print(json ? Json({{"file", file}, {"line", line}, {"name", name}}).dump()
                           : file + ":" + std::to_string(line) + ": " + name + "\n");
    }

    const std::vector<Secret>& secrets;
    bool json;
    ListPrinter printer;
    bool found = false;
};

int Refuse(const std::string& why) {
    std::fprintf(stderr, "dialwright: %s\n", why.c_str());
    return kUsage;
}

int RunAudit(const Options& options) {
    const auto text = ReadInput(options.secretFile);
    if (!text) return Refuse(options.secretFile + " cannot be read");
    const SecretFile file = ReadSecretFile(*text);
    const std::string problem = file.problem.empty() ? WhatIsTooShort(file.secrets) : file.problem;
    if (!problem.empty()) return Refuse(options.secretFile + ": " + problem);
    Audit audit(file.secrets, options.json);
    bool whole = true;
    for (const std::string& path : options.paths) {
        const std::vector<std::wstring> files = FilesOf(path);
        if (files.empty()) return Refuse("there are no traces in " + path);
        for (const std::wstring& file : files) {
            if (audit.Read(file)) continue;
            whole = false;
            Refuse(ToUtf8(file) + " was begun anew or cannot be read to its end");
        }
    }
    audit.Finish();
    if (audit.HasFound()) return kFound;
    return whole ? kDone : kUsage;
}

}  // namespace

Action DefineTraceAudit(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    command.add_option("--secret-file", options->secretFile, "lines NAME=VALUE; - is standard input")->required();
    command.add_option("paths", options->paths, "trace files, each with the others of its host, or folders of traces")
        ->required();
    command.add_flag("--json", options->json, "print JSON");
    command.footer(
        "Prints file:line: NAME for each line that holds a value, and never the value. Error files are searched too.\n"
        "Values shorter than four bytes are refused, as they would be found everywhere by chance.\n\n"
        "  dialwright trace audit --secret-file secrets.txt logs\\trace\n\n"
        "Exit codes: 0 clean, 1 a secret was found, 2 usage or a file that cannot be read.");
    return [options] { return RunAudit(*options); };
}

}  // namespace dialwright::tools
