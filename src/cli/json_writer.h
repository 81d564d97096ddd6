#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// Writes JSON with its keys in the order they are given, two-space indented.
class JsonWriter {
public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    JsonWriter& key(std::string_view name);
    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view(text)); }
    JsonWriter& value(int number);
    JsonWriter& value(bool flag);
    JsonWriter& null();

    const std::string& text() const { return m_out; }

private:
    void beforeValue();
    void newline();
    void close(char bracket);

    std::string m_out;
    std::vector<bool> m_hasItems; // one entry per open object or array
    bool m_afterKey = false;
};

// A JSON string literal, quotes included.
std::string jsonQuoted(std::string_view text);

} // namespace zr310
