#pragma once

#include "text_ids.h"

#include <string>
#include <string_view>

namespace zr310 {

// The two languages of the user interface; the numeric values are the
// language offsets of the string table (id + 1000 * language).
enum class Language { English = 0, Chinese = 1 };

// The current user-interface language: 0 English, 1 Chinese.
extern int gbytLang;

Language currentLanguage();

// The text with English id `id` (a name from text_ids.h) in the given
// language (UTF-8). An id the table does not hold gives an empty string.
std::string_view ResString(int id, Language language);

// The text with English id `id` in the current language (`gbytLang`).
std::string ResString(int id);

// True when the table holds a text for this English id.
bool hasResString(int id);

} // namespace zr310
