#include "write_checks.h"

#include "bands.h"
#include "channel.h"
#include "options.h"

#include <algorithm>
#include <cstdio>

namespace zr310 {

namespace {

using Findings = std::vector<WriteFinding>;

constexpr int kPriorityOff = 0;
constexpr std::uint16_t kLargestDcsValue = 0777;

std::string hexValue(std::uint16_t value) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%04X", value);
    return text;
}

std::string channelKey(int n, ChannelField field) {
    return "ch" + std::to_string(n) + "." + std::string(channelFieldKey(field));
}

void add(Findings& findings, CheckSeverity severity, std::string key, const std::string& problem,
         int channel = 0, std::optional<ChannelField> field = {}) {
    std::string message = key + ": " + problem;
    findings.push_back({severity, std::move(key), std::move(message), channel, field});
}

// The sides of channel n the radio uses, with the fields that hold them.
struct UsedSide {
    Side side;
    ChannelField freq, tone;
};

std::vector<UsedSide> usedSides(const ChannelView& channel) {
    std::vector<UsedSide> sides;
    if (!channel.isOpen())
        return sides;
    sides.push_back({Side::Receive, ChannelField::RxFreq, ChannelField::RxTone});
    if (channel.txAllowed())
        sides.push_back({Side::Transmit, ChannelField::TxFreq, ChannelField::TxTone});
    return sides;
}

// A band change keeps the channels' frequencies, which may then lie outside.
void frequenciesInBand(const RadioImage& image, CheckSeverity severity, Findings& findings) {
    const Band& band = bandOfImage(image);
    constexpr double kTolerance = 1e-6;
    for (int n = 1; n <= kChannelCount; ++n) {
        const ChannelView channel(image, channelColumn(n));
        for (const UsedSide& used : usedSides(channel)) {
            const double mhz = frequencyMHz(channel.frequency(used.side));
            if (mhz >= band.limits.lowerMHz - kTolerance &&
                mhz <= band.limits.upperMHz + kTolerance)
                continue;
            add(findings, severity, channelKey(n, used.freq),
                formatFrequency(mhz) + " MHz is outside the band " + std::string(band.text), n,
                used.freq);
        }
    }
}

// Tones from another program's file or an erased radio (0xFFFF).
std::optional<std::string> toneProblem(Tone tone) {
    if (tone.kind == ToneKind::Ctcss) {
        const auto listed = parseToneText(toneText(tone));
        if (listed && listed->value == tone.value)
            return std::nullopt;
        return "CTCSS value " + hexValue(tone.value) + " (" + toneText(tone) +
               ") is not one of the 50 tones";
    }
    if ((tone.kind == ToneKind::Dcs || tone.kind == ToneKind::DcsInverted) &&
        tone.value > kLargestDcsValue)
        return "DCS value " + hexValue(tone.value) + " is not a three-digit octal code";
    return std::nullopt;
}

void tonesOnTheLists(const RadioImage& image, CheckSeverity severity, Findings& findings) {
    for (int n = 1; n <= kChannelCount; ++n) {
        const ChannelView channel(image, channelColumn(n));
        for (const UsedSide& used : usedSides(channel))
            if (const auto problem = toneProblem(channel.tone(used.side)))
                add(findings, severity, channelKey(n, used.tone), *problem, n, used.tone);
    }
}

void priorityChannelOpen(const RadioImage& image, CheckSeverity severity, Findings& findings) {
    const int n = decodeOption(OptionId::CboPriorityCH, image);
    if (n == kPriorityOff || ChannelView(image, channelColumn(n)).isOpen())
        return;
    add(findings, severity, std::string(optionName(OptionId::CboPriorityCH)),
        "CH" + std::to_string(n) + " is closed", n, ChannelField::Close);
}

struct Check {
    CheckSeverity severity;
    void (*run)(const RadioImage&, CheckSeverity, Findings&);
};

constexpr Check kChecks[] = {
    {CheckSeverity::Error, frequenciesInBand},
    {CheckSeverity::Error, tonesOnTheLists},
    {CheckSeverity::Warning, priorityChannelOpen},
};

} // namespace

std::string_view severityWord(CheckSeverity severity) {
    return severity == CheckSeverity::Error ? "error" : "warning";
}

std::vector<WriteFinding> checkBeforeWrite(const RadioImage& image) {
    Findings findings;
    for (const Check& check : kChecks)
        check.run(image, check.severity, findings);
    std::stable_sort(
        findings.begin(), findings.end(),
        [](const WriteFinding& a, const WriteFinding& b) { return a.severity < b.severity; });
    return findings;
}

} // namespace zr310
