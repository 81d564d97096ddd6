#pragma once

#include "cli_common.h"
#include "radio_image.h"

#include <QJsonDocument>
#include <QJsonObject>
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

// Runs a command function in-process the way main() does, usage errors included.
inline CommandRun runCommand(
    const std::function<int(std::vector<std::string>, std::ostream&, std::ostream&)>& command,
    std::vector<std::string> args) {
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
