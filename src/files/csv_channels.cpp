#include "csv_channels.h"

#include "bands.h"
#include "channel.h"
#include "image_edit.h"
#include "shown_bytes.h"
#include "sizes.h"
#include "tones.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace zr310 {

namespace {

enum Column {
    Location,
    Name,
    Frequency,
    Duplex,
    Offset,
    ToneMode,
    RToneFreq,
    CToneFreq,
    DtcsCode,
    DtcsPolarity,
    RxDtcsCode,
    CrossMode,
    Mode,
    TStep,
    Skip,
    Power,
    Comment,
    UrCall,
    Rpt1Call,
    Rpt2Call,
    DvCode,
    kColumnCount
};

constexpr std::array<std::string_view, kColumnCount> kColumnNames{
    "Location",  "Name",     "Frequency",    "Duplex",     "Offset",    "Tone",     "rToneFreq",
    "cToneFreq", "DtcsCode", "DtcsPolarity", "RxDtcsCode", "CrossMode", "Mode",     "TStep",
    "Skip",      "Power",    "Comment",      "URCALL",     "RPT1CALL",  "RPT2CALL", "DVCODE"};

// Repeater shifts on these bands run from 0.6 to 10 MHz. A pair further
// apart is written as its two frequencies ("split"), which reads better.
constexpr double kLargestShiftMHz = 10.0;

// What an unused or empty tone column holds.
constexpr std::string_view kDefaultCtcss = "88.5";
constexpr std::string_view kDefaultDcs = "023";
constexpr std::string_view kDefaultPolarity = "NN";
constexpr std::string_view kDefaultCrossMode = "Tone->Tone";

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Six decimals, whatever the C locale's decimal point.
std::string mhzText(double mhz) {
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, mhz, std::chars_format::fixed, 6);
    return {text, result.ptr};
}

std::string lower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

std::string lineText(int line) {
    return "line " + std::to_string(line) + ": ";
}

// One record of the text: its fields, unquoted, and the line it starts on.
struct Record {
    int line = 0;
    std::vector<std::string> fields;
};

// Cuts the text into records. Blank lines and lines starting with '#' are
// skipped; a quoted field may hold separators, line ends and "" for a quote.
// The separator is a tab when the first record (the header) has one, else a
// comma.
class RecordReader {
public:
    explicit RecordReader(std::string_view text) : m_text(text) {
        if (m_text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
            m_text.remove_prefix(kByteOrderMark.size());
    }

    std::optional<Record> next() {
        skipBlankAndCommentLines();
        if (m_pos >= m_text.size())
            return std::nullopt;
        if (m_separator == 0)
            m_separator = currentLine().find('\t') != std::string_view::npos ? '\t' : ',';
        Record record{m_line, {}};
        std::string field;
        bool quoted = false;
        while (m_pos < m_text.size()) {
            const char c = m_text[m_pos++];
            if (quoted) {
                if (c != '"') {
                    field += c;
                    m_line += c == '\n';
                } else if (m_pos < m_text.size() && m_text[m_pos] == '"') {
                    field += '"';
                    ++m_pos;
                } else {
                    quoted = false;
                }
            } else if (c == '"' && trimmed(field).empty()) {
                field.clear();
                quoted = true;
            } else if (c == m_separator) {
                record.fields.push_back(std::move(field));
                field.clear();
            } else if (c == '\n') {
                ++m_line;
                break;
            } else if (c != '\r') {
                field += c;
            }
        }
        if (quoted)
            throw CsvError(lineText(record.line) + "a quoted field has no closing quote");
        record.fields.push_back(std::move(field));
        return record;
    }

private:
    std::string_view currentLine() const {
        return m_text.substr(m_pos, m_text.find('\n', m_pos) - m_pos);
    }

    void skipBlankAndCommentLines() {
        while (m_pos < m_text.size()) {
            const std::string_view line = trimmed(currentLine());
            if (!line.empty() && line.front() != '#')
                return;
            m_pos += currentLine().size() + 1;
            ++m_line;
        }
    }

    std::string_view m_text;
    std::size_t m_pos = 0;
    int m_line = 1;
    char m_separator = 0;
};

// Where each column is in a record: -1 for a column the file does not have.
struct Header {
    std::array<int, kColumnCount> index{};
    std::size_t size = 0;
};

Header readHeader(const Record& record) {
    Header header;
    header.index.fill(-1);
    header.size = record.fields.size();
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
        const std::string name = lower(trimmed(record.fields[i]));
        for (std::size_t c = 0; c < kColumnNames.size(); ++c)
            if (header.index[c] < 0 && name == lower(kColumnNames[c]))
                header.index[c] = static_cast<int>(i);
    }
    for (Column required : {Location, Frequency})
        if (header.index[required] < 0)
            throw CsvError(lineText(record.line) + "the header has no " +
                           std::string(kColumnNames[required]) + " column");
    return header;
}

// A data record read through the header. A column the file does not have
// reads as an empty field.
class Row {
public:
    Row(const Header& header, const Record& record) : m_header(header), m_record(record) {
        if (record.fields.size() < header.size)
            refuse(std::to_string(record.fields.size()) + " fields where the header has " +
                   std::to_string(header.size));
    }

    bool has(Column column) const { return m_header.index[column] >= 0; }

    std::string_view operator[](Column column) const {
        return has(column) ? trimmed(m_record.fields[toIndex(m_header.index[column])])
                           : std::string_view();
    }

    // The column, or `other` when the file lacks it: a file with only one
    // tone (or code) column uses it for both sides.
    Column either(Column column, Column other) const { return has(column) ? column : other; }

    [[noreturn]] void refuse(const std::string& why) const {
        throw CsvError(lineText(m_record.line) + why);
    }

    [[noreturn]] void refuse(Column column, std::string_view expected) const {
        refuse(std::string(kColumnNames[column]) + " '" +
               shownBytes((*this)[column], ShownAs::Text) + "' is not " + std::string(expected));
    }

private:
    const Header& m_header;
    const Record& m_record;
};

int location(const Row& row) {
    const std::string_view text = row[Location];
    int n = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), n);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || n < 1 ||
        n > kChannelCount)
        row.refuse(Location, "a channel number from 1 to 16");
    return n;
}

// MHz rounded to whole hertz.
double frequencyOf(const Row& row, Column column) {
    const std::string_view text = row[column];
    double mhz = 0;
    if (isPlainDecimalNumber(text)) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), mhz);
        if (error == std::errc() && end == text.data() + text.size() && mhz < 1e6)
            return std::round(mhz * 1e6) / 1e6;
    }
    row.refuse(column, "a frequency in MHz");
}

std::string inBand(const Row& row, double mhz, const Band& band) {
    if (mhz < band.limits.lowerMHz || mhz > band.limits.upperMHz)
        row.refuse(mhzText(mhz) + " MHz is outside the band " + std::string(band.text));
    return mhzText(mhz);
}

struct Frequencies {
    std::string rx, tx;
    bool txOff = false;
};

// A channel that may not transmit ("off") transmits on its receive frequency.
Frequencies frequencies(const Row& row, const Band& band) {
    const double rx = frequencyOf(row, Frequency);
    const std::string duplex = lower(row[Duplex]);
    double tx = rx;
    if (duplex == "+" || duplex == "-" || duplex == "split") {
        const double offset = row[Offset].empty() ? 0 : frequencyOf(row, Offset);
        tx = duplex == "split" ? offset : duplex == "+" ? rx + offset : rx - offset;
    } else if (!duplex.empty() && duplex != "off") {
        row.refuse(Duplex, "empty, +, -, split or off");
    }
    return {inBand(row, rx, band), inBand(row, std::round(tx * 1e6) / 1e6, band), duplex == "off"};
}

// "CTC 88.5" from a tone column; "100" and "88.50" are taken as 100.0 and 88.5.
std::string ctcssTone(const Row& row, Column column) {
    std::string tone(row[column].empty() ? kDefaultCtcss : row[column]);
    if (tone.find('.') != std::string::npos) {
        while (tone.back() == '0')
            tone.pop_back();
        if (tone.back() == '.')
            tone.pop_back();
    }
    if (tone.find('.') == std::string::npos)
        tone += ".0";
    const auto list = SetQtcodeArray();
    if (std::find(list.begin(), list.end(), tone) == list.end())
        row.refuse(column, "a CTCSS tone of the list, such as 88.5");
    return "CTC " + tone;
}

// "DCS 023" or "-DCS 023" from a code column; "23" is taken as 023, as a
// spreadsheet writes it back.
std::string dcsTone(const Row& row, Column column, char polarity) {
    std::string code(row[column].empty() ? kDefaultDcs : row[column]);
    const bool octal = code.size() <= 3 && std::all_of(code.begin(), code.end(),
                                                       [](char c) { return c >= '0' && c <= '7'; });
    if (!octal)
        row.refuse(column, "a DCS code of up to three octal digits, such as 023");
    code.insert(0, 3 - code.size(), '0');
    return (polarity == 'R' ? "-DCS " : "DCS ") + code;
}

// The two letters of DtcsPolarity, transmit then receive.
std::string polarities(const Row& row) {
    std::string letters(row[DtcsPolarity].empty() ? kDefaultPolarity : row[DtcsPolarity]);
    std::transform(letters.begin(), letters.end(), letters.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (letters.size() != 2 ||
        !std::all_of(letters.begin(), letters.end(), [](char c) { return c == 'N' || c == 'R'; }))
        row.refuse(DtcsPolarity, "two letters N or R, transmit then receive");
    return letters;
}

struct Tones {
    std::string rx = "OFF", tx = "OFF";
};

// One side of a cross mode: "", "tone" or "dtcs". The transmit side reads
// rToneFreq / DtcsCode, the receive side cToneFreq / RxDtcsCode.
std::string crossSide(const Row& row, std::string_view kind, Side side) {
    const bool tx = side == Side::Transmit;
    if (kind == "tone")
        return ctcssTone(row,
                         tx ? row.either(RToneFreq, CToneFreq) : row.either(CToneFreq, RToneFreq));
    if (kind == "dtcs")
        return dcsTone(row,
                       tx ? row.either(DtcsCode, RxDtcsCode) : row.either(RxDtcsCode, DtcsCode),
                       polarities(row)[tx ? 0 : 1]);
    return "OFF";
}

Tones tones(const Row& row) {
    const std::string mode = lower(row[ToneMode]);
    Tones tones;
    if (mode == "tone") {
        tones.tx = ctcssTone(row, row.either(RToneFreq, CToneFreq));
    } else if (mode == "tsql") {
        tones.tx = tones.rx = ctcssTone(row, row.either(CToneFreq, RToneFreq));
    } else if (mode == "dtcs") {
        const Column code = row.either(DtcsCode, RxDtcsCode);
        tones.tx = dcsTone(row, code, polarities(row)[0]);
        tones.rx = dcsTone(row, code, polarities(row)[1]);
    } else if (mode == "cross") {
        const std::string cross =
            lower(row[CrossMode].empty() ? kDefaultCrossMode : row[CrossMode]);
        const auto arrow = cross.find("->");
        const auto known = [](std::string_view kind) {
            return kind.empty() || kind == "tone" || kind == "dtcs";
        };
        if (arrow == std::string::npos || cross.size() == 2 || !known(cross.substr(0, arrow)) ||
            !known(cross.substr(arrow + 2)))
            row.refuse(CrossMode, "one of Tone->Tone, Tone->DTCS, DTCS->Tone, DTCS->DTCS, "
                                  "->Tone, ->DTCS, Tone->, DTCS->");
        tones.tx = crossSide(row, cross.substr(0, arrow), Side::Transmit);
        tones.rx = crossSide(row, cross.substr(arrow + 2), Side::Receive);
    } else if (!mode.empty()) {
        row.refuse(ToneMode, "empty, Tone, TSQL, DTCS or Cross");
    }
    return tones;
}

std::string bandwidth(const Row& row) {
    const std::string mode = lower(row[Mode]);
    if (mode.empty() || mode == "fm")
        return "Wide";
    if (mode == "nfm")
        return "Narrow";
    row.refuse(Mode, "FM or NFM");
}

// "S" skips the channel in a scan; "P" (priority) scans it.
std::string scan(const Row& row) {
    const std::string skip = lower(row[Skip]);
    if (skip.empty() || skip == "p")
        return "Add";
    if (skip == "s")
        return "Del";
    row.refuse(Skip, "empty, S or P");
}

// Watts below 2.5 are Low; "5.0W", "1W", "0.5", "High" and "Low" are taken.
std::string power(const Row& row) {
    const std::string text = lower(row[Power]);
    if (text.empty())
        return "high";
    if (text == "low" || text == "high")
        return text;
    std::string_view watts = text;
    if (watts.back() == 'w')
        watts = trimmed(watts.substr(0, watts.size() - 1));
    double value = 0;
    if (isPlainDecimalNumber(watts)) {
        const auto [end, error] = std::from_chars(watts.data(), watts.data() + watts.size(), value);
        if (error == std::errc() && end == watts.data() + watts.size())
            return value < 2.5 ? "low" : "high";
    }
    row.refuse(Power, "watts (such as 5.0W), High or Low");
}

void applyRow(RadioImage& image, int column, const Row& row, const Band& band) {
    // Everything is read before the first field is written.
    const Frequencies f = frequencies(row, band);
    const Tones t = tones(row);
    const std::pair<ChannelField, std::string> texts[] = {
        {ChannelField::Close, ""},
        {ChannelField::NoTx, f.txOff ? "x" : ""},
        {ChannelField::RxFreq, f.rx},
        {ChannelField::TxFreq, f.tx},
        {ChannelField::RxTone, t.rx},
        {ChannelField::TxTone, t.tx},
        {ChannelField::Bandwidth, bandwidth(row)},
        {ChannelField::Scan, scan(row)},
        {ChannelField::Power, power(row)},
    };
    try {
        for (const auto& [field, text] : texts)
            setChannelField(image, column, field, text);
    } catch (const EditError& error) {
        row.refuse(error.what());
    }
}

// Export: the word of one side in a cross mode, and its tone or code.
std::string_view crossWord(Tone tone) {
    if (tone.kind == ToneKind::Off)
        return "";
    return tone.kind == ToneKind::Ctcss ? "Tone" : "DTCS";
}

std::string toneValue(Tone tone) {
    const std::string text = toneText(tone); // "CTC 88.5", "-DCS 023"
    return text.substr(text.find(' ') + 1);
}

using CsvRow = std::array<std::string, kColumnCount>;

void putFrequencies(CsvRow& row, const ChannelView& channel) {
    const double rx = frequencyMHz(channel.frequency(Side::Receive));
    const double tx = frequencyMHz(channel.frequency(Side::Transmit));
    row[Frequency] = mhzText(rx);
    row[Offset] = mhzText(0);
    if (!channel.txAllowed()) {
        row[Duplex] = "off";
    } else if (std::abs(tx - rx) > kLargestShiftMHz) {
        row[Duplex] = "split";
        row[Offset] = mhzText(tx);
    } else if (tx != rx) {
        row[Duplex] = tx > rx ? "+" : "-";
        row[Offset] = mhzText(std::abs(tx - rx));
    }
}

// The transmit side goes to rToneFreq / DtcsCode, the receive side to
// cToneFreq / RxDtcsCode; a column the tone mode does not use keeps its default.
void putTones(CsvRow& row, Tone tx, Tone rx) {
    row[RToneFreq] = row[CToneFreq] = kDefaultCtcss;
    row[DtcsCode] = row[RxDtcsCode] = kDefaultDcs;
    row[CrossMode] = kDefaultCrossMode;
    const auto put = [&row](Tone tone, Column ctcss, Column dcs) {
        if (tone.kind != ToneKind::Off)
            row[tone.kind == ToneKind::Ctcss ? ctcss : dcs] = toneValue(tone);
    };
    put(tx, RToneFreq, DtcsCode);
    put(rx, CToneFreq, RxDtcsCode);
    row[DtcsPolarity] = {tx.kind == ToneKind::DcsInverted ? 'R' : 'N',
                         rx.kind == ToneKind::DcsInverted ? 'R' : 'N'};

    const std::string_view txWord = crossWord(tx);
    const std::string_view rxWord = crossWord(rx);
    if (txWord.empty() && rxWord.empty()) {
        row[ToneMode] = "";
    } else if (txWord == "Tone" && rxWord.empty()) {
        row[ToneMode] = "Tone";
    } else if (txWord == rxWord && tx.value == rx.value) {
        row[ToneMode] = txWord == "Tone" ? "TSQL" : "DTCS";
        if (txWord == "DTCS")
            row[RxDtcsCode] = kDefaultDcs;
    } else {
        row[ToneMode] = "Cross";
        row[CrossMode] = std::string(txWord) + "->" + std::string(rxWord);
    }
}

std::string joined(const CsvRow& row) {
    std::string line = row[0];
    for (std::size_t i = 1; i < row.size(); ++i)
        line += "," + row[i];
    return line + "\r\n";
}

} // namespace

std::string exportChannelsCsv(const RadioImage& image) {
    CsvRow header;
    std::copy(kColumnNames.begin(), kColumnNames.end(), header.begin());
    std::string text = joined(header);
    for (int n = 1; n <= kChannelCount; ++n) {
        const ChannelView channel(image, channelColumn(n));
        if (!channel.isOpen())
            continue;
        CsvRow row;
        row[Location] = std::to_string(n);
        putFrequencies(row, channel);
        putTones(row, channel.tone(Side::Transmit), channel.tone(Side::Receive));
        row[Mode] = channel.narrow() ? "NFM" : "FM";
        row[TStep] = stepText(channel.frequency(Side::Receive));
        row[Skip] = channel.scanDeleted() ? "S" : "";
        row[Power] = channel.lowPower() ? "1.0W" : "5.0W";
        text += joined(row);
    }
    return text;
}

WriteResult saveChannelsCsv(const std::filesystem::path& path, const RadioImage& image) {
    const std::string text = exportChannelsCsv(image);
    return writeFileAtomically(
        path, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

int importChannelsCsv(RadioImage& image, std::string_view text) {
    RecordReader reader(text);
    const auto headerRecord = reader.next();
    if (!headerRecord)
        throw CsvError("the file has no header line");
    const Header header = readHeader(*headerRecord);
    const Band& band = bandOfImage(image);
    RadioImage edited = image;
    std::array<int, kChannelCount + 1> lineOfChannel{};
    int rows = 0;
    while (const auto record = reader.next()) {
        const Row row(header, *record);
        const int n = location(row);
        int& lineOfN = lineOfChannel[toIndex(n)];
        if (lineOfN != 0)
            row.refuse("channel " + std::to_string(n) + " is already set on line " +
                       std::to_string(lineOfN));
        lineOfN = record->line;
        applyRow(edited, channelColumn(n), row, band);
        ++rows;
    }
    image = edited;
    return rows;
}

} // namespace zr310
