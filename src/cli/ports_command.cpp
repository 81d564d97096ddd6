#include "ports_command.h"

#include "cli_common.h"
#include "json_writer.h"
#include "ports.h"
#include "radio_search.h"
#include "text_table.h"
#include "transfer_support.h"

#include <QEventLoop>

#include <algorithm>
#include <optional>

namespace zr310 {

namespace {

// Table headings: Port, Description, Manufacturer, VID:PID, Serial Number, Radio.
constexpr int kHeadings = 6;

struct PortRow {
    PortInfo info;
    bool listed = false; // the system reports it
    std::optional<ProbeResult> probe;
};

// The system's ports (unless `only` the given ones), then each port given
// that opens none of the devices already in the list.
std::vector<PortRow> portRows(const std::vector<std::string>& given, bool only) {
    std::vector<PortRow> rows;
    for (const PortInfo& info : only ? QList<PortInfo>{} : systemPorts())
        rows.push_back({info, true, {}});
    for (const std::string& name : given) {
        const QString port = QString::fromStdString(name);
        const bool known = std::any_of(rows.begin(), rows.end(), [&](const PortRow& row) {
            return isSamePort(row.listed ? row.info.device : row.info.name, port);
        });
        if (!known)
            rows.push_back({{port, resolvePortName(port), {}, {}, {}, {}}, false, {}});
    }
    return rows;
}

// Every port probed at once; each result goes to its row.
void probeAll(std::vector<PortRow>& rows) {
    QStringList ports;
    for (const PortRow& row : rows)
        ports << row.info.name;
    RadioSearch search(ports);
    QEventLoop loop;
    QObject::connect(&search, &RadioSearch::finished, &loop, &QEventLoop::quit);
    search.start();
    loop.exec();
    const QList<ProbeResult> results = search.results();
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].probe = results[qsizetype(i)];
}

// What the probe found, as JSON tells it ("current", "version 1.0") and as
// the table tells it (its text id); for no radio, why.
struct Answer {
    const char* word;
    int id;
};

Answer answerOf(const ProbeResult& probe) {
    switch (probe.radio) {
    case RadioProbe::Radio::Current:
        return {"current", txt::ProbeCurrent};
    case RadioProbe::Radio::Version10:
        return {"version 1.0", txt::ProbeVersion10};
    case RadioProbe::Radio::None:
        break;
    }
    switch (probe.problem.kind) {
    case PortProblemKind::None:
        break;
    case PortProblemKind::InUse:
        return {"busy", txt::ProbeInUse};
    case PortProblemKind::PermissionDenied:
        return {"not allowed", txt::ProbeNotAllowed};
    case PortProblemKind::NotSerialPort:
        return {"not a serial port", txt::ProbeNotSerialPort};
    case PortProblemKind::NoSuchPort:
        return {"no such port", txt::ProbeNoSuchPort};
    case PortProblemKind::OtherError:
        return {"error", txt::ProbeCannotOpen};
    }
    return probe.outcome == TransferOutcome::NoResponse
               ? Answer{"no answer", txt::ProbeNoAnswer}
               : Answer{"incomplete answer", txt::ProbeIncompleteAnswer};
}

std::string problemText(const PortRow& row, Language language) {
    return unreachableText(row.info.name, row.probe->problem, language).toStdString();
}

std::string portsAsJson(const std::vector<PortRow>& rows, Language language) {
    JsonWriter json;
    json.beginArray();
    for (const PortRow& row : rows) {
        const PortInfo& info = row.info;
        json.beginObject().key("name").value(info.name.toStdString());
        json.key("device").value(info.device.toStdString()).key("listed").value(row.listed);
        json.key("description").value(info.description.toStdString());
        json.key("manufacturer").value(info.manufacturer.toStdString());
        json.key("usb_id").value(info.usbId.toStdString());
        json.key("serial_number").value(info.serialNumber.toStdString());
        if (row.probe) {
            const Answer answer = answerOf(*row.probe);
            json.key("radio");
            if (row.probe->found()) {
                json.value(answer.word);
            } else {
                json.null().key("reason").value(answer.word);
                if (row.probe->problem)
                    json.key("message").value(problemText(row, language));
            }
        }
        json.endObject();
    }
    json.endArray();
    return json.text();
}

// The table, then one line for each port that could not be opened, saying why.
std::string portsAsTable(const std::vector<PortRow>& rows, bool probed, Language language) {
    std::vector<std::string> headings;
    for (int id = txt::PortsHeadingPort; id < txt::PortsHeadingPort + kHeadings; ++id) {
        if (probed || id != txt::PortsHeadingRadio)
            headings.push_back(text(id, language));
    }
    TextTable table(headings);
    std::string problems;
    for (const PortRow& row : rows) {
        const PortInfo& info = row.info;
        std::vector<std::string> cells{info.name.toStdString(), info.description.toStdString(),
                                       info.manufacturer.toStdString(), info.usbId.toStdString(),
                                       info.serialNumber.toStdString()};
        if (row.probe) {
            cells.push_back(text(answerOf(*row.probe).id, language));
            if (row.probe->problem)
                problems += plain(problemText(row, language)) + '\n';
        }
        table.addRow(std::move(cells));
    }
    return table.render() + (problems.empty() ? "" : '\n' + problems);
}

} // namespace

int runPortsCommand(const std::vector<std::string>& arguments, std::ostream& out,
                    std::ostream& err) {
    (void)err;
    std::vector<std::string> args = arguments;
    const Language language = takeLanguageOption(args);
    const bool probe = takeFlag(args, "--probe");
    const bool json = takeFlag(args, "--json");
    const bool only = takeFlag(args, "--only");
    const std::vector<std::string> given = takeValueOptions(args, "--port", "-p");
    rejectUnknownOptions(args);
    if (!args.empty())
        throw UsageError("unexpected argument '" + args.front() + "'");
    if (only && given.empty())
        throw UsageError("--only lists the ports given with --port: give at least one");
    rejectRepeatedPorts(given);

    ensureApplication();
    std::vector<PortRow> rows = portRows(given, only);
    if (probe)
        probeAll(rows);
    out << (json ? portsAsJson(rows, language) : portsAsTable(rows, probe, language));
    const bool found = std::any_of(rows.begin(), rows.end(), [](const PortRow& row) {
        return row.probe && row.probe->found();
    });
    return probe && !found ? kExitNoResponse : kExitOk;
}

} // namespace zr310
