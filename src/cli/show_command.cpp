#include "show_command.h"

#include "cli_common.h"
#include "json_writer.h"
#include "text_table.h"

namespace zr310 {

namespace {

void writeChoice(JsonWriter& json, std::string_view name, const ListChoice& choice) {
    json.key(name).beginObject().key("index").value(choice.index);
    json.key("text").value(choice.text).endObject();
}

void writeChannel(JsonWriter& json, int number, const ChannelTexts& ch) {
    json.beginObject().key("ch").value(number);
    json.key("rx_freq").value(ch.rxFreq).key("tx_freq").value(ch.txFreq);
    json.key("rx_tone").value(ch.rxTone).key("tx_tone").value(ch.txTone);
    json.key("scan").value(ch.scan).key("busy_lock").value(ch.busyLock);
    json.key("power").value(ch.power).key("bandwidth").value(ch.bandwidth);
    json.key("close").value(ch.close).key("no_tx").value(ch.noTx).endObject();
}

void writeTestChannel(JsonWriter& json, int number, const TestChannelSummary& t) {
    json.beginObject().key("ch").value(number);
    json.key("rx_freq").value(t.texts.rxFreq).key("rx_step").value(t.rxStep);
    json.key("rx_tone").value(t.texts.rxTone);
    json.key("tx_freq").value(t.texts.txFreq).key("tx_step").value(t.txStep);
    json.key("tx_tone").value(t.texts.txTone);
    json.key("close").value(t.texts.close).key("no_tx").value(t.texts.noTx).endObject();
}

std::string checkMark(bool on) {
    return on ? "x" : "-";
}

} // namespace

std::string summaryAsJson(const ImageSummary& s) {
    JsonWriter json;
    json.beginObject();
    writeChoice(json, "band", s.band);
    json.key("band_range").value(s.bandRange);
    writeChoice(json, "bandwidth", s.bandwidth);
    json.key("channels").beginArray();
    for (std::size_t i = 0; i < s.channels.size(); ++i)
        writeChannel(json, static_cast<int>(i) + 1, s.channels[i]);
    json.endArray();
    json.key("options").beginObject();
    for (const OptionChoice& option : s.options)
        writeChoice(json, optionName(option.id), option.choice);
    json.endObject();
    json.key("test_channels").beginArray();
    for (std::size_t i = 0; i < s.testChannels.size(); ++i)
        writeTestChannel(json, static_cast<int>(i) + 1, s.testChannels[i]);
    json.endArray();
    json.key("tuning").beginObject();
    for (std::size_t i = 0; i < kTuningItems.size(); ++i)
        json.key(kTuningItems[i].key).value(s.tuning[i]);
    json.endObject();
    json.key("radio_id").value(s.radioId);
    json.key("write_date");
    if (s.writeDate)
        json.value(*s.writeDate);
    else
        json.null();
    json.key("user_text").value(s.userText);
    json.endObject();
    return json.text();
}

std::string summaryAsTable(const ImageSummary& s, Language language) {
    auto word = [language](int id) { return std::string(ResString(id, language)); };
    std::string out;
    out += word(1301) + ": ZR-310    " + word(1302) + ": " + s.band.text + "  (" + s.bandRange +
           ")    " + word(1211) + ": " + s.bandwidth.text + "\n\n";

    TextTable channels({word(1203), word(1204), word(1205), word(1206), word(1207), word(1208),
                        word(1209), word(1210), word(1211), word(1201), word(1202)});
    for (std::size_t i = 0; i < s.channels.size(); ++i) {
        const ChannelTexts& c = s.channels[i];
        channels.addRow({word(1203) + " " + std::to_string(i + 1), c.rxFreq, c.rxTone, c.txFreq,
                         c.txTone, c.scan, c.busyLock, c.power, c.bandwidth, checkMark(c.close),
                         checkMark(c.noTx)});
    }
    out += word(1200) + "\n" + channels.render() + "\n";

    TextTable options({word(1303), ""});
    for (const OptionChoice& option : s.options)
        options.addRow({word(optionLabelId(option.id)), option.choice.text});
    out += options.render() + "\n";

    TextTable tests({word(1508), word(1204), word(1225), word(1205), word(1206), word(1225),
                     word(1207), word(1201), word(1202)});
    for (std::size_t i = 0; i < s.testChannels.size(); ++i) {
        const TestChannelSummary& t = s.testChannels[i];
        tests.addRow({word(1203) + " " + std::to_string(i + 1), t.texts.rxFreq, t.rxStep,
                      t.texts.rxTone, t.texts.txFreq, t.txStep, t.texts.txTone,
                      checkMark(t.texts.close), checkMark(t.texts.noTx)});
    }
    out += tests.render() + "\n";

    TextTable tuning({word(1501), word(1509)});
    for (std::size_t i = 0; i < kTuningItems.size(); ++i)
        tuning.addRow({word(1502 + static_cast<int>(i)), std::to_string(s.tuning[i])});
    out += tuning.render() + "\n";

    out += word(1400) + ": " + s.radioId + "\n";
    out += word(1401) + ": " + s.writeDate.value_or("-") + "\n";
    out += word(1409) + ": " + s.userText + "\n";
    return out;
}

int runShowCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err) {
    const Language language = takeLanguageOption(args);
    const bool json = takeFlag(args, "--json");
    rejectUnknownOptions(args);
    if (args.size() != 1)
        throw UsageError("show needs exactly one FILE");

    RadioImage image;
    if (!loadImageFile(args[0], image, language, err))
        return kExitFileRefused;
    const ImageSummary summary = summarizeImage(image, language);
    out << (json ? summaryAsJson(summary) : summaryAsTable(summary, language));
    return kExitOk;
}

} // namespace zr310
