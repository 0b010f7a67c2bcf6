// "CPU Registers": the HC11's programmer's model from CpuRegisters, as a
// register window (RegisterWindow.h) with eight rows: D is the two
// accumulators together, CCR shows its flag letters, and PC, which no
// back-end holds, is written on the host. It has no auto refresh.
#pragma once

#include "ui/views/RegisterWindow.h"

extern const RegisterWindowKind CpuWindowKind;

// The window's factory for the main window's tool-window table.
QWidget* CreateRegCPU(frmMain& main);
