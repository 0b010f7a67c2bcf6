// The HC11's peripheral registers and the board's PIA as eight register
// windows (RegisterWindow.h): one row table each, read by the one window
// class. The seven windows of the register block share one copy of it,
// RegisterBlock; the PIA window reads PiaBlock for itself.
#pragma once

#include "ui/views/RegisterWindow.h"

extern const RegisterWindowKind PortsWindowKind;
extern const RegisterWindowKind TimerWindowKind;
extern const RegisterWindowKind PulseAccWindowKind;
extern const RegisterWindowKind SciWindowKind;
extern const RegisterWindowKind SpiWindowKind;
extern const RegisterWindowKind AdWindowKind;
extern const RegisterWindowKind OtherWindowKind;
extern const RegisterWindowKind PiaWindowKind;

// The windows' factories for the main window's tool-window table.
template <const RegisterWindowKind& Kind>
QWidget* CreateRegisterWindow(frmMain& main)
{
    return new RegisterWindow(main, Kind);
}
