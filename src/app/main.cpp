// zr310: the ZR-310 PC programming program.
#include "main_form.h"
#include "version.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFont>
#include <QIcon>
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

// The program icon in every size it is drawn at (zr310_icon.qrc).
QIcon programIcon() {
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        icon.addFile(QStringLiteral(":/icons/zr310/%1.png").arg(size));
    }
    return icon;
}

// The command line's options; parse or process the arguments with `parser`.
struct CommandLine {
    CommandLine() {
        parser.setApplicationDescription(QStringLiteral(
            "ZR-310 PC Programming Software: reads, edits and writes the memory of a "
            "ZR-310 radio."));
        screenshot.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOptions({port, locale, open, screenshot});
        parser.addPositionalArgument(
            QStringLiteral("file"),
            QStringLiteral("Data file (.k720) or raw image (.bin) to open."),
            QStringLiteral("[file]"));
    }
    // Whether the arguments ask for the help or the version. (--help-all
    // lists the window system's options, so it needs QApplication.)
    bool asksForHelpOrVersion(const QStringList& arguments) {
        parser.parse(arguments);
        return parser.isSet(help) || parser.isSet(version);
    }

    QCommandLineParser parser;
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption port{
        QStringLiteral("port"),
        QStringLiteral("Port the radio is on: COM1..COM4, a serial device such as "
                       "/dev/ttyUSB0, or \"sim\" for the built-in simulated radio. "
                       "Default: COM1."),
        QStringLiteral("name"), QStringLiteral("COM1")};
    const QCommandLineOption locale{
        QStringLiteral("locale"),
        QStringLiteral("Start as on a system with this locale, e.g. zh_CN (Chinese) or en_US. "
                       "Default: the system's locale, or the ZR310_LOCALE environment "
                       "variable."),
        QStringLiteral("name")};
    const QCommandLineOption open{QStringLiteral("open"),
                                  QStringLiteral("Open this data file at start."),
                                  QStringLiteral("file")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"),
                                  QStringLiteral("Save a picture of the window and quit."),
                                  QStringLiteral("png")};
};

// --help and --version need no display: they are answered (and the program
// ends) before QApplication, which cannot start without one, is created.
void answerHelpOrVersion(int& argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    CommandLine commandLine;
    if (!commandLine.asksForHelpOrVersion(arguments)) {
        return;
    }
    const QCoreApplication app(argc, argv);
    commandLine.parser.process(app); // prints, then ends the program
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("zr310"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(zr310::kProgramVersion));
    answerHelpOrVersion(argc, argv);
    QApplication app(argc, argv);
    addChineseFallbackFont();
    QApplication::setWindowIcon(programIcon());
    QApplication::setDesktopFileName(QStringLiteral("zr310")); // zr310.desktop

    CommandLine commandLine;
    QCommandLineParser& parser = commandLine.parser;
    parser.process(app);
    const QStringList files = parser.positionalArguments();
    if (files.size() + int(parser.isSet(commandLine.open)) > 1) {
        std::fprintf(stderr, "zr310: give one file to open\n");
        return 2;
    }

    zr310::ui::StartOptions options = zr310::ui::StartOptions::fromEnvironment();
    if (parser.isSet(commandLine.locale)) {
        options.locale = QLocale(parser.value(commandLine.locale));
    }
    options.portName = parser.value(commandLine.port);
    options.fileToOpen =
        parser.isSet(commandLine.open) ? parser.value(commandLine.open) : files.value(0);

    zr310::ui::MainForm window(options);
    window.showAndOpen();
    if (parser.isSet(commandLine.screenshot)) {
        const QString picture = parser.value(commandLine.screenshot);
        QTimer::singleShot(kScreenshotDelay, &window, [&window, picture] {
            if (!window.grab().save(picture)) {
                std::fprintf(stderr, "zr310: cannot write %s\n", qPrintable(picture));
                QApplication::exit(1);
                return;
            }
            QApplication::exit(0);
        });
    }
    return QApplication::exec();
}
