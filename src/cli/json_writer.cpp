#include "json_writer.h"

#include <cstdio>

namespace zr310 {

std::string jsonQuoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

void JsonWriter::newline() {
    m_out += '\n';
    m_out.append(2 * m_hasItems.size(), ' ');
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (!m_hasItems.empty()) {
        if (m_hasItems.back())
            m_out += ',';
        m_hasItems.back() = true;
        newline();
    }
}

void JsonWriter::close(char bracket) {
    const bool hadItems = m_hasItems.back();
    m_hasItems.pop_back();
    if (hadItems)
        newline();
    m_out += bracket;
    if (m_hasItems.empty())
        m_out += '\n';
}

JsonWriter& JsonWriter::beginObject() {
    beforeValue();
    m_out += '{';
    m_hasItems.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    close('}');
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    beforeValue();
    m_out += '[';
    m_hasItems.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    close(']');
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    beforeValue();
    m_out += jsonQuoted(name) + ": ";
    m_afterKey = true;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
    beforeValue();
    m_out += jsonQuoted(text);
    return *this;
}

JsonWriter& JsonWriter::value(int number) {
    beforeValue();
    m_out += std::to_string(number);
    return *this;
}

JsonWriter& JsonWriter::value(bool flag) {
    beforeValue();
    m_out += flag ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::null() {
    beforeValue();
    m_out += "null";
    return *this;
}

} // namespace zr310
