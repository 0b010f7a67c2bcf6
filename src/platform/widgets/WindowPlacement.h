// The placement rule shared by the main window and every tool window: state,
// position and size are stored in twips (1440 to the inch) under a key prefix
// in the section "Windows", and converted to pixels only here, at the border.
#pragma once

#include <QRect>
#include <QString>

class QWidget;

// 0 normal, 1 minimised, 2 maximised; positions and sizes in twips.
struct WindowPlacement {
    int State = 0;
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
};

int TwipsToPixelsX(double twips);
int TwipsToPixelsY(double twips);
double PixelsToTwipsX(int pixels);
double PixelsToTwipsY(int pixels);

// Reads prefix + "State", "Left", "Top", "Width", "Height" (each with its
// default) and applies them to the window, or to its MDI frame if it has one,
// kept on its area (KeptOnArea).
void LoadPlacement(QWidget* window, const QString& prefix, const WindowPlacement& defaults);

// Saves the four sizes, kept on the window's area, only while the window is
// normal, so that a minimised or maximised window keeps its last normal
// placement; the state is saved always.
void SavePlacement(QWidget* window, const QString& prefix);

// A stored placement may come from a screen that is gone or from a hand-edited
// store: the frame (pixels) shrunk to fit the area and moved so that its top
// edge, where the title bar is, lies inside the area with a grip of its width
// that the mouse can reach. A frame that already meets that stays as it is;
// an empty area (not known yet) changes nothing.
QRect KeptOnArea(const QRect& frame, const QRect& area);

// Puts the window (or its MDI frame) into the normal state at the placement;
// the placement's State is not looked at.
void MoveToPlacement(QWidget* window, const WindowPlacement& placement);

// Writes the four sizes under the prefix with the state 0, so that the window
// opens there the next time it is loaded.
void WritePlacement(const QString& prefix, const WindowPlacement& placement);

// The placement as the window has it now, in twips.
WindowPlacement CurrentPlacement(QWidget* window);
