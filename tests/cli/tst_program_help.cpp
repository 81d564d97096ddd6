// --help of every zr310-cli command, and zr310's --help and --version on a
// machine without a display.

#include "cli_test_util.h"

#include <QRegularExpression>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

class TestProgramHelp : public QObject {
    Q_OBJECT

private slots:
    // Each command named in `zr310-cli --help` shows its own lines of it (set
    // its own key list), and no other command's.
    void commandHelp() {
        const QString cli = QStringLiteral(ZR310_CLI_EXE);
        const ProgramRun all = runProgram(cli, {"--help"}, QDir::tempPath());
        QCOMPARE(all.status, kExitOk);
        const QString list = all.out.section("Commands:\n", 1).section("\n\n", 0, 0);
        static const QRegularExpression firstWord("^  (\\S+)", QRegularExpression::MultilineOption);
        QStringList names;
        for (const auto& match : firstWord.globalMatch(list))
            names << match.captured(1);
        names.removeDuplicates();
        QVERIFY(names.contains("set") && names.contains("read"));
        for (const QString& name : names) {
            const ProgramRun help = runProgram(cli, {name, "--help"}, QDir::tempPath());
            QVERIFY2(help.status == kExitOk, qPrintable(name + ": " + help.err));
            const QString own = name == "set" ? "usage: zr310-cli set " : "usage:\n  " + name + ' ';
            QVERIFY2(help.out.startsWith(own), qPrintable(help.out));
            for (const QString& other : names)
                QVERIFY2(other == name || !help.out.contains("\n  " + other + ' '),
                         qPrintable(name + " shows " + other));
        }
    }

    // zr310-cli says the same version as zr310 (one number, from the build).
    void commandLineVersion() {
        const ProgramRun run = runProgram(ZR310_CLI_EXE, {"--version"}, QDir::tempPath());
        QCOMPARE(run.status, kExitOk);
        QVERIFY2(QRegularExpression("^zr310-cli \\d+\\.\\d+\n$").match(run.out).hasMatch(),
                 qPrintable(run.out));
#ifdef ZR310_GUI_EXE
        const ProgramRun gui = runProgram(ZR310_GUI_EXE, {"--version"}, QDir::tempPath());
        QCOMPARE(gui.out.section(' ', 1).trimmed(), run.out.section(' ', 1).trimmed());
#endif
    }

    // Answered before the window system is needed.
    void windowProgramWithoutDisplay() {
#ifdef ZR310_GUI_EXE
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            env.remove(name);
        const auto row = [&env](const char* option, const char* shown) {
            const ProgramRun run = runProgram(ZR310_GUI_EXE, {option}, QDir::tempPath(), env);
            QVERIFY2(run.status == kExitOk, qPrintable(run.err));
            QVERIFY2(run.out.contains(shown), qPrintable(run.out));
        };
        row("--help", "--port <name>");
        row("--version", "zr310 ");
#else
        QSKIP("zr310 is not built");
#endif
    }
};

QTEST_GUILESS_MAIN(TestProgramHelp)
#include "tst_program_help.moc"
