#pragma once

#include "cli_common.h"
#include "radio_image.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QStringList>
#include <QTemporaryDir>

#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace zr310::testing {

struct CommandRun {
    int status = -1;
    std::string out, err;
};

using CommandFunction = std::function<int(std::vector<std::string>, std::ostream&, std::ostream&)>;

// Runs a command function in-process the way main() does, usage errors included.
inline CommandRun runCommand(const CommandFunction& command, std::vector<std::string> args) {
    std::ostringstream out, err;
    CommandRun run;
    try {
        run.status = command(std::move(args), out, err);
    } catch (const UsageError& e) {
        err << e.what();
        run.status = kExitUsage;
    }
    run.out = out.str();
    run.err = err.str();
    return run;
}

struct ProgramRun {
    int status = -1; // -1: the program crashed or did not end
    QString out, err;
};

// Waits for a started program to end and takes its output.
inline ProgramRun finishProgram(QProcess& process) {
    ProgramRun run;
    if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit)
        process.kill();
    else
        run.status = process.exitCode();
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// Runs a program in the folder given, to its end.
inline ProgramRun
runProgram(const QString& program, const QStringList& args, const QString& folder,
           const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start(program, args);
    return finishProgram(process);
}

inline std::vector<std::string> argList(const QStringList& args) {
    std::vector<std::string> list;
    for (const QString& arg : args)
        list.push_back(arg.toStdString());
    return list;
}

inline RadioImage randomImage(QRandomGenerator& random) {
    RadioImage image;
    for (auto& byte : image.linear())
        byte = static_cast<std::uint8_t>(random.bounded(256));
    return image;
}

inline void writeRaw(const std::string& path, const RadioImage& image) {
    const auto bytes = image.toRadioOrder();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

inline RadioImage readRaw(const std::string& path) {
    RadioImage::Bytes bytes{};
    std::ifstream(path, std::ios::binary).read(reinterpret_cast<char*>(bytes.data()), bytes.size());
    return RadioImage::fromRadioOrder(bytes);
}

} // namespace zr310::testing
