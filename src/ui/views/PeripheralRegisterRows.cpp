#include "ui/views/PeripheralRegisterRows.h"

#include "engine/state/ByteHistory.h"
#include "engine/state/TargetState.h"
#include "engine/link/TargetLink.h"
#include "ui/main/frmMain.h"

namespace {
constexpr char Bin = '%';
constexpr char Hex = '$';

// Rows stand in the order the user reads them, which is not address order.
const RegisterRow PortRows[] = {
    {.name = "PORTA", .address = 0x1000, .format = Bin, .title = "Port A Data",
     .bits = "PA7 PA6 PA5 PA4 PA3 PA2 PA1 PA0"},
    {.name = "PORTB", .address = 0x1004, .format = Bin, .title = "Port B Data",
     .bits = "PB7 PB6 PB5 PB4 PB3 PB2 PB1 PB0"},
    {.name = "PORTC", .address = 0x1003, .format = Bin, .title = "Port C Data",
     .bits = "PC7 PC6 PC5 PC4 PC3 PC2 PC1 PC0"},
    {.name = "PORTCL", .address = 0x1005, .format = Bin, .title = "Port C Latched Data",
     .bits = "PCL7 PCL6 PCL5 PCL4 PCL3 PCL2 PCL1 PCL0"},
    {.name = "DDRC", .address = 0x1007, .format = Bin, .title = "Data Direction for Port C (1 = output)",
     .bits = "DDC7 DDC6 DDC5 DDC4 DDC3 DDC2 DDC1 DDC0"},
    {.name = "PORTD", .address = 0x1008, .format = Bin, .title = "Port D Data",
     .bits = "- - PD5 PD4 PD3 PD2 PD1 PD0"},
    {.name = "DDRD", .address = 0x1009, .format = Bin, .title = "Data Direction for Port D (1 = output)",
     .bits = "- - DDD5 DDD4 DDD3 DDD2 DDD1 DDD0"},
    {.name = "PORTE", .address = 0x100A, .format = Bin, .readOnly = true, .title = "Port E Data (input only)",
     .bits = "PE7 PE6 PE5 PE4 PE3 PE2 PE1 PE0"},
    {.name = "PIOC", .address = 0x1002, .format = Bin, .title = "Parallel I/O Control",
     .bits = "STAF STAI CWOM HNDS OIN PLS EGA INVB"},
    // What the simulated chip's input pins carry; a pin that is an output ignores its bit.
    {.name = "PA inputs", .address = int(SimulatedLine::PortA), .format = Bin, .write = RowWrite::SimulatedLine,
     .title = "Simulated inputs on port A (PA0-PA2, PA3 and PA7 as inputs)", .bits = "PA7 PA6 PA5 PA4 PA3 PA2 PA1 PA0"},
    {.name = "PC inputs", .address = int(SimulatedLine::PortC), .format = Bin, .write = RowWrite::SimulatedLine,
     .title = "Simulated inputs on port C", .bits = "PC7 PC6 PC5 PC4 PC3 PC2 PC1 PC0"},
    {.name = "PD inputs", .address = int(SimulatedLine::PortD), .format = Bin, .write = RowWrite::SimulatedLine,
     .title = "Simulated inputs on port D", .bits = "- - PD5 PD4 PD3 PD2 PD1 PD0"},
    {.name = "STRA input", .address = int(SimulatedLine::StrobeA), .format = Bin, .write = RowWrite::SimulatedLine,
     .title = "Simulated strobe A input (PIOC's EGA chooses the active edge)", .bits = "- - - - - - - STRA"},
};

const RegisterRow TimerRows[] = {
    {.name = "TCNT", .address = 0x100E, .isWord = true, .readOnly = true, .title = "Timer Counter"},
    {.name = "TIC1", .address = 0x1010, .isWord = true, .readOnly = true, .title = "Timer Input Capture 1"},
    {.name = "TIC2", .address = 0x1012, .isWord = true, .readOnly = true, .title = "Timer Input Capture 2"},
    {.name = "TIC3", .address = 0x1014, .isWord = true, .readOnly = true, .title = "Timer Input Capture 3"},
    {.name = "TOC1", .address = 0x1016, .isWord = true, .title = "Timer Output Compare 1"},
    {.name = "TOC2", .address = 0x1018, .isWord = true, .title = "Timer Output Compare 2"},
    {.name = "TOC3", .address = 0x101A, .isWord = true, .title = "Timer Output Compare 3"},
    {.name = "TOC4", .address = 0x101C, .isWord = true, .title = "Timer Output Compare 4"},
    {.name = "TOC5", .address = 0x101E, .isWord = true, .title = "Timer Output Compare 5"},
    {.name = "TCTL1", .address = 0x1020, .format = Bin, .title = "Timer Control 1",
     .bits = "OM2 OL2 OM3 OL3 OM4 OL4 OM5 OL5"},
    {.name = "TCTL2", .address = 0x1021, .format = Bin, .title = "Timer Control 2",
     .bits = "- - EDG1B EDG1A EDG2B EDG2A EDG3B EDG3A"},
    {.name = "TMSK1", .address = 0x1022, .format = Bin, .title = "Timer Interrupt Mask 1",
     .bits = "OC1I OC2I OC3I OC4I OC5I IC1I IC2I IC3I"},
    {.name = "TFLG1", .address = 0x1023, .format = Bin, .title = "Timer Interrupt Flag 1 (write 1 to clear)",
     .bits = "OC1F OC2F OC3F OC4F OC5F IC1F IC2F IC3F"},
    {.name = "TMSK2", .address = 0x1024, .format = Bin, .title = "Timer Interrupt Mask 2",
     .bits = "TOI RTII PAOVI PAII - - PR1 PR0"},
    {.name = "TFLG2", .address = 0x1025, .format = Bin, .title = "Timer Interrupt Flag 2 (write 1 to clear)",
     .bits = "TOF RTIF PAOVF PAIF - - - -"},
    {.name = "CFORC", .address = 0x100B, .format = Bin, .title = "Timer Compare Force",
     .bits = "FOC1 FOC2 FOC3 FOC4 FOC5 - - -"},
    {.name = "OC1M", .address = 0x100C, .format = Bin, .title = "Output Compare 1 Mask",
     .bits = "OC1M7 OC1M6 OC1M5 OC1M4 OC1M3 - - -"},
    {.name = "OC1D", .address = 0x100D, .format = Bin, .title = "Output Compare 1 Data",
     .bits = "OC1D7 OC1D6 OC1D5 OC1D4 OC1D3 - - -"},
};

const RegisterRow PulseAccRows[] = {
    {.name = "PACNT", .address = 0x1027, .format = Hex, .title = "Pulse Accumulator Count"},
    {.name = "PACTL", .address = 0x1026, .format = Bin, .title = "Pulse Accumulator Control",
     .bits = "DDRA7 PAEN PAMOD PEDGE - - RTR1 RTR0"},
};

const RegisterRow SciRows[] = {
    {.name = "BAUD", .address = 0x102B, .format = Bin, .title = "SCI Baud Rate Control",
     .bits = "TCLR - SCP1 SCP0 RCKB SCR2 SCR1 SCR0"},
    {.name = "SCCR1", .address = 0x102C, .format = Bin, .title = "SCI Control 1", .bits = "R8 T8 - M WAKE - - -"},
    {.name = "SCCR2", .address = 0x102D, .format = Bin, .title = "SCI Control 2",
     .bits = "TIE TCIE RIE ILIE TE RE RWU SBK"},
    {.name = "SCSR", .address = 0x102E, .format = Bin, .readOnly = true, .title = "SCI Status",
     .bits = "TDRE TC RDRF IDLE OR NF FE -"},
    {.name = "SCDR", .address = 0x102F, .format = Hex, .title = "SCI Data (read: received, write: sent)"},
};

const RegisterRow SpiRows[] = {
    {.name = "SPCR", .address = 0x1028, .format = Bin, .title = "SPI Control",
     .bits = "SPIE SPE DWOM MSTR CPOL CPHA SPR1 SPR0"},
    {.name = "SPSR", .address = 0x1029, .format = Bin, .readOnly = true, .title = "SPI Status",
     .bits = "SPIF WCOL - MODF - - - -"},
    {.name = "SPDR", .address = 0x102A, .format = Hex, .title = "SPI Data"},
    // The simulated chip's SPI device, for a program that is the master.
    {.name = "SPI answer", .address = int(SimulatedLine::SpiAnswer), .format = Hex, .write = RowWrite::SimulatedLine,
     .title = "Simulated SPI device: the byte it answers every transfer with"},
    {.name = "SPI sent", .address = int(SimulatedLine::SpiSent), .format = Hex, .readOnly = true,
     .write = RowWrite::SimulatedLine, .title = "Simulated SPI device: the last byte the program sent it"},
};

const RegisterRow AdRows[] = {
    {.name = "ADCTL", .address = 0x1030, .format = Bin, .title = "A/D Control and Status",
     .bits = "CCF - SCAN MULT CD CC CB CA"},
    {.name = "ADR1", .address = 0x1031, .format = Hex, .readOnly = true, .title = "A/D Result 1"},
    {.name = "ADR2", .address = 0x1032, .format = Hex, .readOnly = true, .title = "A/D Result 2"},
    {.name = "ADR3", .address = 0x1033, .format = Hex, .readOnly = true, .title = "A/D Result 3"},
    {.name = "ADR4", .address = 0x1034, .format = Hex, .readOnly = true, .title = "A/D Result 4"},
    // What the simulated chip's port E pins carry: $00 at VRL to $FF at VRH.
    {.name = "PE0 level", .address = 0, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE0"},
    {.name = "PE1 level", .address = 1, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE1"},
    {.name = "PE2 level", .address = 2, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE2"},
    {.name = "PE3 level", .address = 3, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE3"},
    {.name = "PE4 level", .address = 4, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE4"},
    {.name = "PE5 level", .address = 5, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE5"},
    {.name = "PE6 level", .address = 6, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE6"},
    {.name = "PE7 level", .address = 7, .format = Hex, .write = RowWrite::SimulatedLine, .title = "Simulated input PE7"},
};

const RegisterRow OtherRows[] = {
    {.name = "OPTION", .address = 0x1039, .format = Bin, .title = "System Configuration Options",
     .bits = "ADPU CSEL IRQE DLY CME - CR1 CR0"},
    {.name = "PPROG", .address = 0x103B, .format = Bin, .title = "EEPROM Programming Control",
     .bits = "ODD EVEN - BYTE ROW ERASE EELAT EPGM"},
    {.name = "HPRIO", .address = 0x103C, .format = Bin, .title = "Highest Priority Interrupt and Mode",
     .bits = "RBOOT SMOD MDA IRV PSEL3 PSEL2 PSEL1 PSEL0"},
    {.name = "INIT", .address = 0x103D, .format = Bin, .title = "RAM and Register Mapping",
     .bits = "RAM3 RAM2 RAM1 RAM0 REG3 REG2 REG1 REG0"},
    {.name = "CONFIG", .address = 0x103F, .format = Bin, .readOnly = true, .title = "Configuration Control",
     .bits = "- - - - NOSEC NOCOP ROMON EEON"},
};

// The input registers show the port's pins. No address takes a value for
// them, so they refuse the dialog: a value shown as written would be a lie.
const RegisterRow PiaRows[] = {
    {.name = "DataIn A", .address = 0x1800, .format = Bin, .readOnly = true, .write = RowWrite::Nowhere,
     .title = "PIA Port A Input (the pins)", .bits = "PA7 PA6 PA5 PA4 PA3 PA2 PA1 PA0"},
    {.name = "DataOut A", .address = 0x1804, .format = Bin, .title = "PIA Port A Output",
     .bits = "PA7 PA6 PA5 PA4 PA3 PA2 PA1 PA0"},
    {.name = "Dir A", .address = 0x1806, .format = Bin, .title = "PIA Port A Direction (1 = output)",
     .bits = "PA7 PA6 PA5 PA4 PA3 PA2 PA1 PA0"},
    {.name = "DataIn B", .address = 0x1801, .format = Bin, .readOnly = true, .write = RowWrite::Nowhere,
     .title = "PIA Port B Input (the pins)", .bits = "PB7 PB6 PB5 PB4 PB3 PB2 PB1 PB0"},
    {.name = "DataOut B", .address = 0x1805, .format = Bin, .title = "PIA Port B Output",
     .bits = "PB7 PB6 PB5 PB4 PB3 PB2 PB1 PB0"},
    {.name = "Dir B", .address = 0x1807, .format = Bin, .title = "PIA Port B Direction (1 = output)",
     .bits = "PB7 PB6 PB5 PB4 PB3 PB2 PB1 PB0"},
};

// Each refresh of the PIA window reads the whole block, whichever rows it shows.
void ReadPia(frmMain& main)
{
    std::int32_t address = PiaAddress;
    std::vector<std::uint8_t> block;
    main.Link().InBytes(address, block, PiaSize);
    if (BoardConnected && block.size() == PiaBlock.size()) {
        std::copy(block.begin(), block.end(), PiaBlock.begin());
        SeenBytes.Seen(PiaAddress, PiaBlock);
    }
}

std::int32_t PiaValue(const RegisterRow& row, int)
{
    return BlockValue(row, PiaBlock, PiaAddress);
}

constexpr RegisterWindowKind BlockWindow(const char* caption, const char* prefix, std::span<const RegisterRow> rows)
{
    return {caption, prefix, rows, true, &ReadRegisterBlockSource, &RegisterBlockValue, true};
}
}  // namespace

const RegisterWindowKind PortsWindowKind = BlockWindow("Port Registers", "RegPorts", PortRows);
const RegisterWindowKind TimerWindowKind = BlockWindow("Timer Registers", "RegTimer", TimerRows);
const RegisterWindowKind PulseAccWindowKind = BlockWindow("Pulse Acc Reg", "RegPA", PulseAccRows);
const RegisterWindowKind SciWindowKind = BlockWindow("SCI Registers", "RegSCI", SciRows);
const RegisterWindowKind SpiWindowKind = BlockWindow("SPI Registers", "RegSPI", SpiRows);
const RegisterWindowKind AdWindowKind = BlockWindow("A/D Registers", "RegAD", AdRows);
const RegisterWindowKind OtherWindowKind = BlockWindow("Other Registers", "RegOther", OtherRows);
const RegisterWindowKind PiaWindowKind = {"PIA Registers", "RegPIA", PiaRows, true, &ReadPia, &PiaValue, true};
