// zr310-sim: an emulated ZR-310 on a pseudo-terminal.
//
//   zr310-sim --memory FILE.bin [--version10] [--strict] [--fault KIND] [--no-line-delay]
//
// Prints "PTY <device>" as its first line, then serves one programming
// session after another on that device until SIGINT or SIGTERM. FILE holds
// the radio's 1024 bytes in radio address order; a missing file starts as an
// erased radio (all 0xFF). After every change the radio makes to its memory
// (a completed write of any kind, radio information included, and a tuning
// value confirmed with OK) the memory is written back to FILE atomically.

#include "atomic_file.h"
#include "emulated_radio.h"
#include "pty_radio_server.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace zr310;

constexpr int kExitUsage = 2;
constexpr int kExitFailure = 1;

std::atomic<bool> g_stop{false};

extern "C" void onSignal(int) {
    g_stop = true;
}

struct Options {
    std::filesystem::path memory;
    EmulatedRadioOptions radio;
    bool lineDelay = true;
};

constexpr std::string_view kUsage =
    "usage: zr310-sim --memory FILE.bin [--version10] [--strict] [--fault KIND]\n"
    "                 [--no-line-delay]\n"
    "  --memory FILE    the radio's 1024 bytes in radio address order; created\n"
    "                   (erased, all 0xFF) when missing, rewritten after each write\n"
    "                   and each confirmed tuning value\n"
    "  --version10      identify as a version-1.0 radio\n"
    "  --strict         do only what the written protocol says: a wake-up is heard\n"
    "                   only between sessions, a session answers only its own packets\n"
    "  --fault KIND     silent | short-ident | bad-lead:N | drop:N | noise | noise:N |\n"
    "                   refuse-tuning | corrupt:N | drop-after:MS\n"
    "  --no-line-delay  answer at once instead of at 9600 baud\n";

std::optional<Options> parseOptions(const std::vector<std::string_view>& args, std::string& error) {
    Options options;
    bool haveMemory = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const auto arg = args[i];
        auto value = [&]() -> std::optional<std::string_view> {
            if (i + 1 >= args.size()) {
                error = std::string(arg) + " needs a value";
                return std::nullopt;
            }
            return args[++i];
        };
        if (arg == "--memory") {
            const auto v = value();
            if (!v)
                return std::nullopt;
            options.memory = std::string(*v);
            haveMemory = true;
        } else if (arg == "--version10") {
            options.radio.version10 = true;
        } else if (arg == "--strict") {
            options.radio.strict = true;
        } else if (arg == "--no-line-delay") {
            options.lineDelay = false;
        } else if (arg == "--fault") {
            const auto v = value();
            if (!v)
                return std::nullopt;
            const auto fault = RadioFault::parse(*v);
            if (!fault) {
                error = "unknown fault: " + std::string(*v);
                return std::nullopt;
            }
            options.radio.fault = *fault;
        } else {
            error = "unknown argument: " + std::string(arg);
            return std::nullopt;
        }
    }
    if (!haveMemory) {
        error = "--memory FILE is required";
        return std::nullopt;
    }
    return options;
}

std::optional<EmulatedRadio::Memory> loadMemory(const std::filesystem::path& path,
                                                std::string& error) {
    EmulatedRadio::Memory memory;
    memory.fill(0xFF);
    std::error_code ec;
    if (!std::filesystem::exists(path, ec))
        return memory; // an erased radio
    const auto read = readWholeFile(path, memory.size() + 1);
    if (read.status != ReadStatus::Ok || read.bytes.size() != memory.size()) {
        error = path.string() + ": " +
                (read.status == ReadStatus::Ok || read.status == ReadStatus::TooLarge
                     ? "not a radio memory of 1024 bytes"
                     : read.detail);
        return std::nullopt;
    }
    std::copy(read.bytes.begin(), read.bytes.end(), memory.begin());
    return memory;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> args(argv + 1, argv + argc);
    for (const auto arg : args) {
        if (arg == "--help" || arg == "-h") {
            std::cout << kUsage;
            return 0;
        }
    }
    std::string error;
    const auto options = parseOptions(args, error);
    if (!options) {
        std::cerr << "zr310-sim: " << error << "\n" << kUsage;
        return kExitUsage;
    }
    const auto memory = loadMemory(options->memory, error);
    if (!memory) {
        std::cerr << "zr310-sim: " << error << "\n";
        return kExitFailure;
    }

    EmulatedRadio radio(*memory, options->radio);
    PtyRadioServer server(radio, {options->lineDelay});
    if (!server.open(error)) {
        std::cerr << "zr310-sim: " << error << "\n";
        return kExitFailure;
    }
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
    std::signal(SIGPIPE, SIG_IGN);

    std::cout << "PTY " << server.devicePath() << std::endl;
    std::cerr << "zr310-sim: serving " << (options->radio.version10 ? "a version-1.0 " : "a ")
              << "radio on " << server.devicePath() << ", fault " << options->radio.fault.toString()
              << (options->lineDelay ? "" : ", no line delay") << "\n";

    int status = 0;
    server.run(g_stop, [&] {
        const auto bytes = server.memory();
        const auto written = writeFileAtomically(options->memory, bytes);
        if (written.ok) {
            std::cerr << "zr310-sim: memory saved to " << options->memory.string() << "\n";
        } else {
            std::cerr << "zr310-sim: cannot save " << options->memory.string() << ": "
                      << written.detail << "\n";
            status = kExitFailure;
        }
    });
    return status;
}
