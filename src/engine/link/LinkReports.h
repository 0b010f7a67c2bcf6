// What the target link tells the user, and the one thing it asks the windows.
// The link knows no window: the GUI implements this interface with its
// message boxes and its status panel, so the link's failures keep their
// words and captions wherever the link is driven from.
#pragma once

#include <QString>

// A failed target operation, one message box each.
enum class LinkFailure {
    NoResponse,         // the reply never came in full
    InvalidData,        // a reply with a bad checksum or no ACK
    PortError,          // the port would not open; detail holds the port's own text
    NotConnected,       // CTS is low: no board on the line
    PortNotOpen,        // the erase found the port closed
    EraseFailed,        // the monitor answered the erase with a NAK
    EraseInvalidData,   // the erase's reply was neither ACK nor NAK
    SimulatorRun,       // a free run was asked of the simulator
};

// The state the status panel shows (BoardStatus).
enum class LinkState {
    Simulator,       // the free run is off in this mode unless the chip is simulated
    SimulatorRunning,   // a free run on the simulated chip
    NotConnected,    // no CTS
    Running,         // a free run on the board
    Ready,           // with StatusSuffix behind it
    NotResponding,   // the last exchange failed
    PortError,       // the port would not open
};

class LinkReports {
public:
    virtual ~LinkReports() = default;
    virtual void LinkFailed(LinkFailure failure, const QString& detail) = 0;
    virtual void LinkStateChanged(LinkState state) = 0;
    // The input-output unit's window is open (its View entry is checked):
    // only then does the simulated program's access to the unit move its flags.
    virtual bool IoUnitShown() const = 0;
};
