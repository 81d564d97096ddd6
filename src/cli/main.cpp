// zr310-cli: scripting and batch use of the ZR-310 programming core.

#include "channel_commands.h"
#include "cli_common.h"
#include "compare_commands.h"
#include "csv_commands.h"
#include "edit_commands.h"
#include "ports_command.h"
#include "report_command.h"
#include "show_command.h"
#include "transfer_commands.h"
#include "tune_command.h"
#include "version.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Command = std::function<int(std::vector<std::string>, std::ostream&, std::ostream&)>;

const char kUsage[] = R"(usage: zr310-cli COMMAND [ARGS]
       zr310-cli --version

Commands:
  new OUT [--force]                       write a new data file holding the start image
  show FILE [--json] [--lang en|zh]       everything the main window shows for FILE
  set FILE KEY=VALUE... [-o OUT [--force]]
                                          edit FILE (or write the result to OUT)
  move FILE FROM TO [-o OUT [--force]]    move channel FROM (or a range such as 3-5) whole
                                          so that it starts at TO; the channels between
                                          shift to make room
  sort FILE [--by KEY] [-o OUT [--force]] sort the channels by KEY, a channel key of set
                                          (rx_freq when not given); closed ones go last
  clear FILE CHANNELS [-o OUT [--force]]  close CHANNELS (3, 3-5 or 2,7) as a new radio's
                                          empty channels are
  export-csv FILE -o OUT.csv [--force]    the open channels of FILE as CSV (docs/csv.md)
  import-csv FILE IN.csv [-o OUT [--force]]
                                          set the channels IN.csv names in FILE (or OUT)
  report FILE -o OUT.pdf [--force] [--lang en|zh]
                                          the printed report of FILE as a PDF
  diff A B [--json]                       every difference between two files, in the keys
                                          of set ("byte 0xAAA" where no key covers it)
  read --port PORT -o OUT [--force]       read the radio into OUT (.k720 or .bin), and
                                          keep a backup of it (below)
  write --port PORT IN [--yes] [--verify] write IN to the radio (--yes: go on with a
                                          version-1.0 radio without asking; --verify:
                                          read it back and compare the written blocks)
                                          and refuses data that fails the checks before
                                          a write (--force: write it all the same);
                                          --port again for each further radio: all
                                          are written at once, one line per port
  info --port PORT [--json]               the radio ID, recent write date and user text
  info --port PORT --set-text TEXT [--verify]
                                          set the radio's user text (--verify: read it
                                          back and compare the written blocks)
  tune --port PORT --get [--json]         the five tuning values stored in the radio
  tune --port PORT [--keep] NAME=VALUE... try each value in tuning mode, then keep it
                                          (--keep) or cancel it; NAME is low_battery,
                                          squelch9, squelch3, ctcss_deviation or
                                          cdcss_deviation, VALUE 0..255 or 0x00..0xFF
  tune --port PORT --write-test FILE      write the test channels of FILE to the radio
  ports [--probe] [--json] [--port PORT]... [--only]
                                          the serial ports the system reports, with their
                                          description, manufacturer, USB VID:PID and serial
                                          number; --port adds one it does not list (a
                                          pseudo-terminal, sim); --probe asks on every port
                                          at once, in under a second, whether a radio answers
                                          (current or version 1.0) or why nothing does; it
                                          reads and writes nothing; --only: just the ports
                                          given with --port

FILE is a data file (.k720) or a raw image (.bin, 1024 bytes in radio address order).
OUT is never replaced without --force; a folder, FIFO or device, or a folder that does not
  exist, is refused before any work starts. set, import-csv, move, sort and clear lock the
  file they write from reading to saving; another edit of it waits up to 5 seconds, then
  is refused (5). They change nothing when any part of the edit is refused.
PORT is COM1..COM4, a serial device (/dev/ttyUSB0, COM7), or sim (a built-in emulated radio).
The radio commands take --lang en|zh too, and all but ports take --trace FILE: every byte
  sent (>) and received (<) with the seconds since the start, in hex.
Every completed read is also saved, never replacing a file, as DATE_TIME_RADIOID.k720 in
  the backups folder: $XDG_DATA_HOME/zr310/backups (~/.local/share/zr310/backups when
  XDG_DATA_HOME is unset), %APPDATA%\zr310\backups on Windows, ~/Library/Application
  Support/zr310/backups on macOS.
Keys of set: chN.rx_freq chN.tx_freq chN.rx_tone chN.tx_tone chN.scan chN.busy_lock
  chN.power chN.bandwidth chN.close chN.no_tx (N = 1..16); tchN.rx_freq tchN.tx_freq
  tchN.rx_tone tchN.tx_tone tchN.close tchN.no_tx (N = 1..11); CboBand CboBandSel and the
  option lists (CboTXLimit, CboSQ, ...) set to an item text; tuning.NAME (0..255);
  user_text (at most 96 characters). zr310-cli set --help lists every key and its values.
  chN and tchN also take a range or a list, ch1-8.power=Low, ch2,5,9.rx_tone="CTC 88.5":
  the value goes to each channel named.
Options that take a value are given once each, unless said otherwise.
Exit status: 0 done, 2 usage error, 3 no response (or the port cannot be opened: the
  message says why), 4 interrupted (or stopped by Ctrl+C, SIGTERM or SIGHUP), 5 file
  refused (or locked by another edit), 6 a write to a version-1.0 radio declined, 7 the
  radio read back after a --verify differs, 8 a tuning frame refused by the radio, 9 the
  data failed the checks before a write. diff exits 0 when the files are equal, 1 when
  they differ; ports --probe exits 3 when no radio answered.
)";

// `COMMAND --help`: the lines of kUsage that start with the command and their
// continuations, then the notes below the list of commands.
std::string commandHelp(std::string_view name) {
    const std::string_view usage = kUsage;
    const std::size_t list = usage.find("Commands:\n") + 10;
    const std::size_t notes = usage.find("\n\n", list) + 1;
    std::string help = "usage:\n";
    bool mine = false;
    for (std::size_t at = list; at < notes;) {
        const std::size_t end = usage.find('\n', at) + 1;
        const std::string_view line = usage.substr(at, end - at);
        if (line.size() > 2 && line[2] != ' ') { // the first line of a command
            const std::string_view rest = line.substr(2);
            mine = rest.size() > name.size() && rest.substr(0, name.size()) == name &&
                   (rest[name.size()] == ' ' || rest[name.size()] == '\n');
        }
        if (mine)
            help += line;
        at = end;
    }
    return help + std::string(usage.substr(notes));
}

const std::map<std::string, Command>& commands() {
    static const std::map<std::string, Command> table{
        {"new", zr310::runNewCommand},
        {"show", zr310::runShowCommand},
        {"set", zr310::runSetCommand},
        {"move", zr310::runMoveCommand},
        {"sort", zr310::runSortCommand},
        {"clear", zr310::runClearCommand},
        {"export-csv", zr310::runExportCsvCommand},
        {"import-csv", zr310::runImportCsvCommand},
        {"report", zr310::runReportCommand},
        {"diff", zr310::runDiffCommand},
        {"read", zr310::runReadCommand},
        {"write", zr310::runWriteCommand},
        {"info", zr310::runInfoCommand},
        {"tune", zr310::runTuneCommand},
        {"ports", zr310::runPortsCommand},
    };
    return table;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 1 && args[0] == "--version") {
        std::cout << "zr310-cli " << zr310::kProgramVersion << '\n';
        return 0;
    }
    if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        std::cout << kUsage;
        return args.empty() ? zr310::kExitUsage : zr310::kExitOk;
    }
    const auto command = commands().find(args[0]);
    if (command == commands().end()) {
        std::cerr << "zr310-cli: unknown command '" << args[0] << "'\n" << kUsage;
        return zr310::kExitUsage;
    }
    args.erase(args.begin());
    // set --help lists every key of set as well.
    const bool help = std::find(args.begin(), args.end(), "--help") != args.end() ||
                      std::find(args.begin(), args.end(), "-h") != args.end();
    if (help && command->first != "set") {
        std::cout << commandHelp(command->first);
        return zr310::kExitOk;
    }
    try {
        return command->second(args, std::cout, std::cerr);
    } catch (const zr310::UsageError& error) {
        std::cerr << "zr310-cli " << command->first << ": " << error.what() << '\n';
        return zr310::kExitUsage;
    }
}
