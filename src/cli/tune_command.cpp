#include "tune_command.h"

#include "cli_common.h"
#include "json_writer.h"
#include "transfer_support.h"
#include "tuning.h"
#include "tuning_session.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace zr310 {

namespace {

using Result = TuningExchange::Result;

struct TunePair {
    const TuningItemInfo* item = nullptr;
    std::uint8_t value = 0;
};

std::string itemNames() {
    std::string names;
    for (const auto& info : kTuningItems)
        names += (names.empty() ? "" : ", ") + std::string(info.key);
    return names;
}

// 0..255, decimal or 0x hex.
std::optional<std::uint8_t> parseByte(std::string_view text) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        text.remove_prefix(2);
        base = 16;
    }
    int value = -1;
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value, base);
    if (text.empty() || ec != std::errc{} || ptr != end || value < 0 || value > 255)
        return std::nullopt;
    return static_cast<std::uint8_t>(value);
}

TunePair parsePair(const std::string& arg) {
    const auto equals = arg.find('=');
    if (equals == std::string::npos)
        throw UsageError("expected NAME=VALUE, not '" + arg + "'");
    const std::string name = arg.substr(0, equals);
    const auto item = std::find_if(kTuningItems.begin(), kTuningItems.end(),
                                   [&](const TuningItemInfo& info) { return info.key == name; });
    if (item == kTuningItems.end())
        throw UsageError("unknown tuning item '" + name + "' (" + itemNames() + ")");
    const auto value = parseByte(std::string_view(arg).substr(equals + 1));
    if (!value)
        throw UsageError(name + " takes a value 0..255 (decimal or 0x hex), not '" +
                         arg.substr(equals + 1) + "'");
    return {&*item, *value};
}

// Runs a transfer that ends in tuning mode (entering it, or writing the test
// channels). Returns an exit status.
int transferIntoTuning(TransferKind kind, const PortArgs& port, RadioImage& image,
                       std::ostream& err) {
    LinkFlags flags;
    SerialTransfer transfer(kind, QString::fromStdString(port.port), image, flags);
    const auto result = runToEnd(transfer);
    if (result.outcome != TransferOutcome::Completed)
        return reportFailure(result, port, kind, err);
    return kExitOk;
}

// The tuning exchanges of one command, one at a time. The first failure is
// reported as the tuning panel reports it and ends the exchanges but leave().
class TuningLink {
public:
    TuningLink(const PortArgs& port, std::ostream& err)
        : m_session(QString::fromStdString(port.port)), m_language(port.language), m_err(err) {}

    // The result of one exchange, or nothing after a failure.
    std::optional<Result> exchange(TuneCommand command, std::uint8_t code, std::uint8_t value = 0,
                                   int* reported = nullptr) {
        if (m_status != kExitOk)
            return std::nullopt;
        if (cancelSignalled()) { // Ctrl+C: no more values, only leaving tuning mode
            m_err << text(txt::TuningCancelled, m_language) << '\n';
            m_status = kExitInterrupted;
            return std::nullopt;
        }
        const auto [result, stored] = wait(command, code, value);
        if (result == Result::NoAnswer || result == Result::Refused || result == Result::Invalid) {
            fail(result);
            return std::nullopt;
        }
        if (reported)
            *reported = stored;
        return result;
    }

    // Leaves tuning mode, also after a failure; the exit status of it all.
    int leave() {
        const Result result = wait(TuneCommand::Leave, kLeaveTuningItemCode, 0).first;
        if (m_status == kExitOk && result != Result::Acknowledged)
            fail(result);
        return m_status;
    }

private:
    std::pair<Result, int> wait(TuneCommand command, std::uint8_t code, std::uint8_t value) {
        QEventLoop loop;
        std::pair<Result, int> answer{Result::Pending, 0};
        QObject::connect(&m_session, &TuningSession::finished, &loop, [&](Result r, int v) {
            answer = {r, v};
            loop.quit();
        });
        m_session.run(command, code, value);
        if (answer.first == Result::Pending)
            loop.exec();
        return answer;
    }

    void fail(Result result) {
        const bool refused = result == Result::Refused;
        std::string message = text(refused ? txt::TuningError : txt::TuningInterrupted, m_language);
        std::replace(message.begin(), message.end(), '\t', ' ');
        m_err << text(txt::CommunicationError, m_language) << ": " << message << '\n';
        m_status = refused ? kExitRefused : kExitInterrupted;
    }

    TuningSession m_session;
    Language m_language;
    std::ostream& m_err;
    int m_status = kExitOk;
};

int getValues(const PortArgs& port, bool json, std::ostream& out, std::ostream& err) {
    RadioImage image = makeStartImage();
    if (const int status = transferIntoTuning(TransferKind::EnterTuning, port, image, err);
        status != kExitOk)
        return status;
    if (const int status = TuningLink(port, err).leave(); status != kExitOk)
        return status;
    if (!json) {
        for (const auto& info : kTuningItems)
            out << info.key << ": " << int(tuningValue(image, info.item)) << '\n';
        return kExitOk;
    }
    JsonWriter writer;
    writer.beginObject().key("tuning").beginObject();
    for (const auto& info : kTuningItems)
        writer.key(info.key).value(int(tuningValue(image, info.item)));
    writer.endObject().endObject();
    out << writer.text();
    return kExitOk;
}

int tuneValues(const PortArgs& port, const std::vector<TunePair>& pairs, bool keep,
               std::ostream& out, std::ostream& err) {
    RadioImage before = makeStartImage();
    if (const int status = transferIntoTuning(TransferKind::EnterTuning, port, before, err);
        status != kExitOk)
        return status;
    TuningLink link(port, err);
    for (const TunePair& pair : pairs) {
        const std::uint8_t code = pair.item->itemCode;
        if (!link.exchange(TuneCommand::Enter, code) ||
            !link.exchange(TuneCommand::Value, code, pair.value) ||
            !link.exchange(keep ? TuneCommand::Confirm : TuneCommand::Cancel, code, pair.value))
            return link.leave();
    }

    // Read the values back: enter the first item, then a cancel carrying the
    // next item's code switches to it and reports its value; the last cancel
    // returns to the test channels.
    std::vector<const TuningItemInfo*> items;
    for (const TunePair& pair : pairs) {
        if (std::find(items.begin(), items.end(), pair.item) == items.end())
            items.push_back(pair.item);
    }
    std::vector<int> after(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto command = i == 0 ? TuneCommand::Enter : TuneCommand::Cancel;
        if (!link.exchange(command, items[i]->itemCode, 0, &after[i]))
            return link.leave();
    }
    if (!link.exchange(TuneCommand::Cancel, items.back()->itemCode))
        return link.leave();
    if (const int status = link.leave(); status != kExitOk)
        return status;
    for (std::size_t i = 0; i < items.size(); ++i)
        out << items[i]->key << ": before " << int(tuningValue(before, items[i]->item))
            << ", after " << after[i] << '\n';
    return kExitOk;
}

int writeTestChannels(const PortArgs& port, const std::string& file, std::ostream& out,
                      std::ostream& err) {
    RadioImage image = makeStartImage();
    if (!loadImageFile(file, image, port.language, err))
        return kExitFileRefused;
    if (const int status = transferIntoTuning(TransferKind::WriteTuning, port, image, err);
        status != kExitOk)
        return status;
    if (const int status = TuningLink(port, err).leave(); status != kExitOk)
        return status;
    out << text(txt::WriteFinished, port.language) << '\n';
    return kExitOk;
}

} // namespace

int runTuneCommand(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& err) {
    std::vector<std::string> args = arguments;
    const PortArgs port = takePortArgs(args);
    const bool get = takeFlag(args, "--get");
    const bool json = takeFlag(args, "--json");
    const bool keep = takeFlag(args, "--keep");
    const std::string testFile = takeValueOption(args, "--write-test");
    rejectUnknownOptions(args);

    std::vector<TunePair> pairs;
    for (const std::string& arg : args)
        pairs.push_back(parsePair(arg));
    if (int(get) + int(!testFile.empty()) + int(!pairs.empty()) != 1)
        throw UsageError("give one of --get, --write-test FILE or NAME=VALUE pairs");
    if (json && !get)
        throw UsageError("--json goes with --get");
    if (keep && pairs.empty())
        throw UsageError("--keep goes with NAME=VALUE pairs");

    ensureApplication();
    const TraceScope trace(port, err);
    if (trace.failed())
        return kExitFileRefused;
    if (get)
        return getValues(port, json, out, err);
    if (!testFile.empty())
        return writeTestChannels(port, testFile, out, err);
    return tuneValues(port, pairs, keep, out, err);
}

} // namespace zr310
