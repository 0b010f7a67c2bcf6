// Fonts by name with a fixed-pitch fallback: the windows draw in a fixed-pitch
// font, and names such as "Fixedsys" or "Terminal" exist on few Linux systems.
#pragma once

#include <QFont>
#include <QString>

// The named font if, in the given size and style, it resolves to a fixed-pitch
// face, else a fixed-pitch face the system has, with that size and style.
QFont FixedPitchFont(const QString& name, double pointSize, bool bold = false, bool italic = false);
