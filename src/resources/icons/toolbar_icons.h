#pragma once

#include <QIcon>

namespace zr310::icons {

// The toolbar's pictures, drawn in code so that they scale with the screen.
enum class ToolbarIcon { Open, Save, Print, Read, Write, Port };

QIcon toolbarIcon(ToolbarIcon which);

// The program's window icon: a handheld radio.
QIcon applicationIcon();

} // namespace zr310::icons
