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
    out += word(txt::ModelType) + ": ZR-310    " + word(txt::FrequencyBand) + ": " + s.band.text +
           "  (" + s.bandRange + ")    " + word(txt::WideNarrow) + ": " + s.bandwidth.text + "\n\n";

    TextTable channels({word(txt::Channel), word(txt::RxFreq), word(txt::RxTone), word(txt::TxFreq),
                        word(txt::TxTone), word(txt::ScanDelAdd), word(txt::BusyLock),
                        word(txt::TxPower), word(txt::WideNarrow), word(txt::Close),
                        word(txt::NoTx)});
    for (std::size_t i = 0; i < s.channels.size(); ++i) {
        const ChannelTexts& c = s.channels[i];
        channels.addRow({word(txt::Channel) + " " + std::to_string(i + 1), c.rxFreq, c.rxTone,
                         c.txFreq, c.txTone, c.scan, c.busyLock, c.power, c.bandwidth,
                         checkMark(c.close), checkMark(c.noTx)});
    }
    out += word(txt::ChannelSetting) + "\n" + channels.render() + "\n";

    TextTable options({word(txt::OptionalFeatures), ""});
    for (const OptionChoice& option : s.options)
        options.addRow({word(optionLabelId(option.id)), option.choice.text});
    out += options.render() + "\n";

    TextTable tests({word(txt::AdjustChannel), word(txt::RxFreq), word(txt::Step),
                     word(txt::RxTone), word(txt::TxFreq), word(txt::Step), word(txt::TxTone),
                     word(txt::Close), word(txt::NoTx)});
    for (std::size_t i = 0; i < s.testChannels.size(); ++i) {
        const TestChannelSummary& t = s.testChannels[i];
        tests.addRow({word(txt::Channel) + " " + std::to_string(i + 1), t.texts.rxFreq, t.rxStep,
                      t.texts.rxTone, t.texts.txFreq, t.txStep, t.texts.txTone,
                      checkMark(t.texts.close), checkMark(t.texts.noTx)});
    }
    out += tests.render() + "\n";

    TextTable tuning({word(txt::TuningAllItems), word(txt::TuningValue)});
    for (std::size_t i = 0; i < kTuningItems.size(); ++i)
        tuning.addRow(
            {word(txt::TuningLowBattery + static_cast<int>(i)), std::to_string(s.tuning[i])});
    out += tuning.render() + "\n";

    out += word(txt::RadioId) + ": " + s.radioId + "\n";
    out += word(txt::RecentWriteDate) + ": " + s.writeDate.value_or("-") + "\n";
    out += word(txt::RadioInformation) + ": " + s.userText + "\n";
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
