#pragma once

#include "radio_image.h"
#include "string_table.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// The radio-wide option lists of the options panel, named as the panel's
// drop-down lists. The declaration order is the order they are shown.
enum class OptionId {
    CboTXLimit,
    CboPreAlert,
    CboTOTAgain,
    CboTOTReset,
    CboRing,
    CboHandModel,
    CboBatFunction,
    CboSQ,
    CboScan,
    CboPriorityCH,
    CboBakScan,
    CboBakCH,
    CboScanHold,
    CboMoni,
    CboPowSel,
    CboBandSel,
};

inline constexpr std::array<OptionId, 16> kAllOptions{
    OptionId::CboTXLimit,  OptionId::CboPreAlert,   OptionId::CboTOTAgain,    OptionId::CboTOTReset,
    OptionId::CboRing,     OptionId::CboHandModel,  OptionId::CboBatFunction, OptionId::CboSQ,
    OptionId::CboScan,     OptionId::CboPriorityCH, OptionId::CboBakScan,     OptionId::CboBakCH,
    OptionId::CboScanHold, OptionId::CboMoni,       OptionId::CboPowSel,      OptionId::CboBandSel,
};

// "CboTXLimit" and so on.
std::string_view optionName(OptionId id);
bool optionFromName(std::string_view name, OptionId& id);

// The string id of the list's label ("Time Out Timer" and so on).
int optionLabelId(OptionId id);

// The items of a list in a language. The monitor list depends on the image:
// while power selection is "Long-hit [Moni]" it holds only "Off" and
// "Unmute Toggle".
std::vector<std::string> optionItems(OptionId id, const RadioImage& image, Language language);

// The list index the image selects (always a valid index of optionItems).
int decodeOption(OptionId id, const RadioImage& image);

// Writes the byte or bits for a list index; other bits of a shared byte are
// kept. An index outside the list changes nothing and returns false.
bool encodeOption(OptionId id, RadioImage& image, int index);

// The radio-wide W/N list: Narrow also makes every channel narrow; going back
// to Wide leaves the channels as they are.
void setRadioWideBandwidth(RadioImage& image, int index);

// Version-1.0 radios have no power selection: bits 0-1 of 0x256 are cleared.
void clearPowerSelection(RadioImage& image);

// True while the monitor list is the short one.
bool monitorListIsShort(const RadioImage& image);

} // namespace zr310
