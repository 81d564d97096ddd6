// zr310: the ZR-310 PC programming program.
#include "main_form.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFont>
#include <QTimer>

#include <chrono>
#include <cstdio>

using namespace std::chrono_literals;

namespace {

constexpr auto kScreenshotDelay = 300ms;

// Chinese texts need a font with CJK glyphs; name one that is commonly
// installed after the default so that Latin text keeps its usual look.
void addChineseFallbackFont() {
    QFont font = QApplication::font();
    QStringList families = font.families();
    if (families.isEmpty()) {
        families << font.family();
    }
    for (const char* cjk :
         {"WenQuanYi Micro Hei", "Noto Sans CJK SC", "Microsoft YaHei", "PingFang SC", "SimSun"}) {
        families << QString::fromLatin1(cjk);
    }
    font.setFamilies(families);
    QApplication::setFont(font);
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zr310"));
    QApplication::setApplicationVersion(QStringLiteral("2.21"));
    addChineseFallbackFont();

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("ZR-310 PC Programming Software: reads, edits and writes the memory of a "
                       "ZR-310 radio."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption portOption(
        QStringLiteral("port"),
        QStringLiteral("Port the radio is on: a serial device such as COM1 or /dev/ttyUSB0, or "
                       "\"sim\" for the built-in simulated radio (the default)."),
        QStringLiteral("name"), QStringLiteral("sim"));
    const QCommandLineOption localeOption(
        QStringLiteral("locale"),
        QStringLiteral("Start as on a system with this locale, e.g. zh_CN (Chinese) or en_US. "
                       "Default: the system's locale, or the ZR310_LOCALE environment "
                       "variable."),
        QStringLiteral("name"));
    const QCommandLineOption openOption(QStringLiteral("open"),
                                        QStringLiteral("Open this data file at start."),
                                        QStringLiteral("file"));
    QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window and quit."),
                                        QStringLiteral("png"));
    screenshotOption.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({portOption, localeOption, openOption, screenshotOption});
    parser.process(app);

    zr310::ui::StartOptions options = zr310::ui::StartOptions::fromEnvironment();
    if (parser.isSet(localeOption)) {
        options.locale = QLocale(parser.value(localeOption));
    }
    options.portName = parser.value(portOption);

    zr310::ui::MainForm window(options);
    window.show();
    if (parser.isSet(openOption)) {
        window.openFile(parser.value(openOption));
    }
    if (parser.isSet(screenshotOption)) {
        const QString file = parser.value(screenshotOption);
        QTimer::singleShot(kScreenshotDelay, &window, [&window, file] {
            if (!window.grab().save(file)) {
                std::fprintf(stderr, "zr310: cannot write %s\n", qPrintable(file));
                QApplication::exit(1);
                return;
            }
            QApplication::exit(0);
        });
    }
    return QApplication::exec();
}
