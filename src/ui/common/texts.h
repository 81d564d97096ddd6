#pragma once

#include "string_table.h"

#include <QString>

#include <string_view>

namespace zr310::ui {

inline QString qs(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// The text of a string-table id in the current language.
inline QString res(int id) {
    return qs(ResString(id, currentLanguage()));
}
inline QString res(int id, Language language) {
    return qs(ResString(id, language));
}

// The table stores line breaks as CR CR LF or CR LF; Qt's labels want LF.
inline QString displayText(QString text) {
    text.replace(QStringLiteral("\r\r\n"), QStringLiteral("\n"));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

// A resource text with line breaks for a label or a message box.
inline QString resDisplay(int id) {
    return displayText(res(id));
}

} // namespace zr310::ui
