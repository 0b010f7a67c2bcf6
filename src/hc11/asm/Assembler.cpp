#include "hc11/asm/Assembler.h"

#include <algorithm>
#include <unordered_map>

#include "hc11/asm/AsmExpression.h"
#include "hc11/asm/AsmKeywords.h"
#include "hc11/asm/AsmListing.h"
#include "hc11/asm/AsmOperand.h"
#include "hc11/asm/AsmSourceLine.h"
#include "hc11/asm/S19Writer.h"
#include "hc11/InstructionText.h"

namespace hc11::as11 {
namespace {

// No source may make the outputs grow without bound: sixteen times the
// address space is more than any real program emits.
constexpr std::uint32_t MaxCodeBytes = 16u * 0x10000u;
// Forward EQU chains are resolved by recursion; this bounds its depth.
constexpr int MaxResolveDepth = 200;
constexpr std::uint16_t NoForm = 0xFFFF;

std::string Hex4(std::int32_t v)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string s = "$0000";
    for (int i = 0; i < 4; ++i)
        s[1 + i] = digits[(v >> (12 - 4 * i)) & 15];
    return s;
}

// Offending text as a message shows it: quoted, clipped, printable.
std::string Quote(std::string_view text)
{
    constexpr std::size_t Max = 40;
    std::string s = "'";
    for (std::size_t i = 0; i < text.size() && i < Max; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        s.push_back(c >= 32 && c < 127 ? char(c) : '?');
    }
    if (text.size() > Max)
        s += "...";
    s.push_back('\'');
    return s;
}

std::string Upper(std::string_view text)
{
    std::string s(text);
    for (char& c : s)
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
    return s;
}

enum class SymbolState : std::uint8_t {
    Known,
    Unknown,     // a SET whose value was not known when read
    Pending,     // an EQU waiting for symbols defined further down
    Resolving,   // on the way of a pending EQU's evaluation: meeting it again is a cycle
    Failed,      // an EQU that can never get a value
};

struct Symbol {
    std::string_view name;
    std::int32_t value = 0;
    SymbolState state = SymbolState::Known;
    bool redefinable = false;   // SET
    bool location = false;      // a label: its value is an address of the line
    int line = 0;
    std::string_view expression;   // pending EQU
    std::int32_t here = 0;         // location counter at the pending EQU
    std::string why;               // for a failed EQU
};

// What the first pass leaves for the second about one line. Kept small:
// the second pass reads the text again, and long sources stay in the cache.
struct Line {
    std::uint16_t form = NoForm;   // row of the instruction table chosen in the first pass
    std::uint16_t address = 0;
    std::uint32_t size = 0;
    bool skip = false;       // the first pass found an error that leaves nothing to do
    bool noEmit = false;     // beyond the output limit
    bool comment = false;    // nothing to assemble: blank or comment
    bool noSymbol = false;   // its label was refused
};

class Assembly final : public SymbolSource {
public:
    AssemblyResult Run(std::string_view source, std::string_view moduleName);

    SymbolValue Lookup(std::string_view name) override;

private:
    void Pass1(Line& line, int number);
    void Pass2(Line& line, int number);
    void ListLine(int number, std::size_t firstPass2Error);
    void DefineLabel(Line& line, int number, std::int32_t value, bool location);
    void SizeInstruction(Line& line, int number);
    void EmitInstruction(int number);
    std::uint32_t DataSize(Line& line, int number);
    void EmitData(Line& line, int number);

    // Values: the first pass reads silently; the second reports.
    bool Value(std::string_view text, int number, std::int32_t& value);
    bool FirstPassValue(std::string_view text, int number, std::int32_t& value, bool report);
    bool InRange(std::string_view text, int number, std::int32_t value, std::int32_t low, std::int32_t high);
    void Resolve(Symbol& symbol);
    void Error(int number, std::string message)
    {
        (pass_ == 1 ? firstPassErrors_ : errors_).push_back({number, std::move(message)});
    }
    void Emit(std::uint8_t byte) { code_.push_back(byte); }

    void WriteSymbolTable(std::string& lst);

    std::vector<Line> lines_;
    std::vector<Symbol> symbols_;
    std::unordered_map<std::string_view, int> index_;
    std::vector<AsmError> errors_;
    std::vector<std::uint8_t> code_;
    std::vector<std::string_view> items_;
    // The line at hand.
    std::string_view text_;
    SourceLine fields_;
    Keyword keyword_;
    Operand operand_;
    const Instruction* form_ = nullptr;
    int symbol_ = -1;
    int listAddress_ = NoAddress;

    // Pass-1 errors are kept apart: the listing shows them line by line.
    std::vector<AsmError> firstPassErrors_;
    std::size_t nextFirstPassError_ = 0;
    std::string* listing_ = nullptr;
    S19Writer* s19_ = nullptr;
    int pass_ = 1;
    std::int32_t pc_ = 0;
    std::uint32_t emitted_ = 0;
    std::int32_t start_ = 0;
    int depth_ = 0;
    bool cycle_ = false;
};

SymbolValue Assembly::Lookup(std::string_view name)
{
    const auto it = index_.find(name);
    if (it == index_.end())
        return {};
    Symbol& s = symbols_[it->second];
    if (s.state == SymbolState::Pending && pass_ == 2)
        Resolve(s);
    if (s.state == SymbolState::Resolving)
        cycle_ = true;
    return {s.value, s.state == SymbolState::Known};
}

void Assembly::Resolve(Symbol& s)
{
    if (depth_ >= MaxResolveDepth) {
        s.state = SymbolState::Failed;
        s.why = "definition of " + Quote(s.name) + " nested too deeply";
        return;
    }
    ++depth_;
    s.state = SymbolState::Resolving;
    const bool outerCycle = cycle_;
    cycle_ = false;
    const ExprResult r = Evaluate(s.expression, s.here, *this);
    if (r.error != ExprError::None) {
        s.state = SymbolState::Failed;
        s.why = std::string(ExprErrorText(r.error)) + " " + Quote(r.where);
    } else if (!r.known) {
        s.state = SymbolState::Failed;
        // A symbol that failed on its own passes its reason on.
        const auto inner = index_.find(r.where);
        if (inner != index_.end() && !symbols_[inner->second].why.empty())
            s.why = symbols_[inner->second].why;
        else
            s.why = cycle_ ? "circular definition of " + Quote(s.name)
                           : "undefined symbol " + Quote(r.where);
    } else {
        s.state = SymbolState::Known;
        s.value = r.value;
    }
    cycle_ = outerCycle || cycle_;
    --depth_;
}

bool Assembly::Value(std::string_view text, int number, std::int32_t& value)
{
    const ExprResult r = Evaluate(text, pc_, *this);
    value = r.value;
    if (r.error != ExprError::None) {
        Error(number, std::string(ExprErrorText(r.error)) + ": " + Quote(r.where));
        return false;
    }
    if (!r.known) {
        const auto it = index_.find(r.where);
        if (it == index_.end())
            Error(number, "undefined symbol " + Quote(r.where));
        else
            Error(number, "symbol " + Quote(r.where) + " has no value: "
                              + (symbols_[it->second].why.empty() ? "see line " + std::to_string(symbols_[it->second].line)
                                                                   : symbols_[it->second].why));
        return false;
    }
    return true;
}

// Origins and sizes must be known when first read, since every address
// after them depends on them.
bool Assembly::FirstPassValue(std::string_view text, int number, std::int32_t& value, bool report)
{
    const ExprResult r = Evaluate(text, pc_, *this);
    value = r.value;
    if (r.error != ExprError::None) {
        if (report)
            Error(number, std::string(ExprErrorText(r.error)) + ": " + Quote(r.where));
        return false;
    }
    if (!r.known) {
        if (report)
            Error(number, "value must be known where it is used: " + Quote(r.where)
                              + " is not defined above this line");
        return false;
    }
    return true;
}

bool Assembly::InRange(std::string_view text, int number, std::int32_t value, std::int32_t low, std::int32_t high)
{
    if (value >= low && value <= high)
        return true;
    Error(number, "value out of range: " + Quote(text) + " is " + std::to_string(value)
                      + ", allowed " + std::to_string(low) + " to " + std::to_string(high));
    return false;
}

void Assembly::DefineLabel(Line& line, int number, std::int32_t value, bool location)
{
    const std::string_view name = fields_.label;
    if (!IsSymbol(name)) {
        Error(number, "bad label " + Quote(name));
        line.noSymbol = true;
        return;
    }
    const bool redefinable = keyword_.directive == Directive::Set;
    const auto [it, fresh] = index_.try_emplace(name, int(symbols_.size()));
    if (!fresh) {
        Symbol& old = symbols_[it->second];
        if (!(redefinable && old.redefinable)) {
            Error(number, "duplicate symbol " + Quote(name) + " (first defined on line "
                              + std::to_string(old.line) + ")");
            line.noSymbol = true;
            return;
        }
        symbol_ = it->second;
        old.value = value;
        return;
    }
    Symbol s;
    s.name = name;
    s.value = value;
    s.redefinable = redefinable;
    s.location = location;
    s.line = number;
    symbols_.push_back(std::move(s));
    symbol_ = it->second;
}

void Assembly::Pass1(Line& line, int number)
{
    line.address = std::uint16_t(pc_);
    fields_ = SplitLine(text_);
    keyword_ = {};
    symbol_ = -1;
    const SourceLine& f = fields_;
    line.comment = f.comment;
    if (f.comment)
        return;
    if (!f.mnemonic.empty()) {
        keyword_ = FindKeyword(f.mnemonic);
        if (!keyword_.instruction && keyword_.directive == Directive::None) {
            Error(number, "unknown mnemonic " + Quote(f.mnemonic));
            line.skip = true;
        }
    }
    const Directive d = keyword_.directive;

    if (d == Directive::Equ || d == Directive::Set) {
        if (f.label.empty()) {
            Error(number, std::string(d == Directive::Equ ? "EQU" : "SET") + " needs a label");
            line.skip = true;
            return;
        }
        std::int32_t value = 0;
        const std::string_view text = OperandField(f.rest);
        if (text.empty()) {
            Error(number, "missing operand");
            line.skip = true;
            return;
        }
        const bool known = FirstPassValue(text, number, value, false);
        DefineLabel(line, number, value, false);
        if (symbol_ >= 0 && !known) {
            Symbol& s = symbols_[symbol_];
            s.state = d == Directive::Equ ? SymbolState::Pending : SymbolState::Unknown;
            s.expression = text;
            s.here = pc_;
        } else if (symbol_ >= 0) {
            symbols_[symbol_].state = SymbolState::Known;
        }
        return;
    }
    if (d == Directive::Org) {
        std::int32_t origin = 0;
        const std::string_view text = OperandField(f.rest);
        if (text.empty()) {
            Error(number, "missing operand");
            line.skip = true;
        } else if (!FirstPassValue(text, number, origin, true)) {
            line.skip = true;
        } else if (!InRange(text, number, origin, 0, 0xFFFF)) {
            line.skip = true;
        } else {
            pc_ = origin;
            line.address = std::uint16_t(pc_);
        }
        if (!f.label.empty())
            DefineLabel(line, number, pc_, true);
        return;
    }
    if (!f.label.empty())
        DefineLabel(line, number, pc_, true);
    if (line.skip)
        return;

    if (keyword_.instruction)
        SizeInstruction(line, number);
    else if (d != Directive::None && d != Directive::Ignored && d != Directive::End)
        line.size = DataSize(line, number);

    const bool emits = keyword_.instruction || d == Directive::Fcb || d == Directive::Fdb
        || d == Directive::Fcc || d == Directive::Bsz || d == Directive::Zmb || d == Directive::Fill;
    if (emits && line.size > 0) {
        if (emitted_ + line.size > MaxCodeBytes) {
            Error(number, "too much code: output stops at " + std::to_string(MaxCodeBytes) + " bytes");
            line.noEmit = true;
        } else {
            emitted_ += line.size;
        }
    }
    if (std::uint32_t(pc_) + line.size > 0x10000u)
        Error(number, "code runs past $FFFF and wraps to $0000");
    pc_ = std::int32_t((std::uint32_t(pc_) + line.size) & 0xFFFF);
}

void Assembly::SizeInstruction(Line& line, int number)
{
    const InstructionForms& forms = *keyword_.instruction;
    Operand& op = operand_;
    const std::string_view problem = ParseOperand(forms, fields_.rest, op);
    if (!problem.empty()) {
        Error(number, std::string(problem) + " " + Quote(op.text) + " for " + Upper(fields_.mnemonic));
        line.skip = true;
        return;
    }
    const Instruction* form = nullptr;
    const char* modeName = "";
    switch (op.kind) {
    case Operand::Kind::None:
        form = forms.In(Mode::Inherent);
        break;
    case Operand::Kind::Immediate:
        form = forms.In(Mode::Immediate8) ? forms.In(Mode::Immediate8) : forms.In(Mode::Immediate16);
        modeName = "immediate";
        break;
    case Operand::Kind::Indexed:
        form = forms.In(op.index == Operand::Index::X ? Mode::IndexedX : Mode::IndexedY);
        modeName = "indexed";
        break;
    case Operand::Kind::Bit: {
        const bool branch = forms.In(Mode::BitBranchDirect) != nullptr;
        const Mode mode = op.index == Operand::Index::X ? (branch ? Mode::BitBranchIndexedX : Mode::BitIndexedX)
                        : op.index == Operand::Index::Y ? (branch ? Mode::BitBranchIndexedY : Mode::BitIndexedY)
                                                        : (branch ? Mode::BitBranchDirect : Mode::BitDirect);
        form = forms.In(mode);
        break;
    }
    case Operand::Kind::Plain: {
        if ((form = forms.In(Mode::Relative)) != nullptr) {
            if (op.force)
                form = nullptr, modeName = op.force == '<' ? "direct" : "extended";
            break;
        }
        const Instruction* direct = forms.In(Mode::Direct);
        const Instruction* extended = forms.In(Mode::Extended);
        std::int32_t value = 0;
        const bool small = direct && op.force != '>'
            && (op.force == '<' || (FirstPassValue(op.address, number, value, false) && value >= 0 && value <= 0xFF));
        form = small ? direct : op.force == '<' ? nullptr : extended;
        modeName = op.force == '<' ? "direct" : "address";
        break;
    }
    }
    if (!form) {
        Error(number, "bad addressing mode: " + Upper(fields_.mnemonic) + " has no " + modeName
                          + " form: " + Quote(op.text));
        line.skip = true;
        return;
    }
    line.form = std::uint16_t(form - AllInstructions().data());
    line.size = form->length;
}

std::uint32_t Assembly::DataSize(Line& line, int number)
{
    const Directive d = keyword_.directive;
    const std::string_view rest = fields_.rest;
    if (d == Directive::Fcc) {
        if (rest.empty()) {
            Error(number, "missing operand");
            line.skip = true;
            return 0;
        }
        const std::size_t close = rest.find(rest[0], 1);
        if (close == std::string_view::npos) {
            Error(number, "missing closing delimiter in " + Quote(rest));
            line.skip = true;
            return 0;
        }
        return std::uint32_t(close - 1);
    }
    const std::string_view field = OperandField(rest);
    if (field.empty()) {
        Error(number, "missing operand");
        line.skip = true;
        return 0;
    }
    if (d == Directive::Fcb || d == Directive::Fdb) {
        SplitItems(field, items_);
        return std::uint32_t(items_.size()) * (d == Directive::Fdb ? 2 : 1);
    }
    // RMB, RMW, BSZ, ZMB: a count; FILL: value, count.
    std::string_view countText = field;
    if (d == Directive::Fill) {
        SplitItems(field, items_);
        if (items_.size() != 2) {
            Error(number, "FILL needs a value and a count: " + Quote(field));
            line.skip = true;
            return 0;
        }
        countText = items_[1];
    }
    std::int32_t count = 0;
    const std::int32_t most = d == Directive::Rmw ? 0x8000 : 0x10000;
    if (!FirstPassValue(countText, number, count, true) || !InRange(countText, number, count, 0, most)) {
        line.skip = true;
        return 0;
    }
    return std::uint32_t(count) * (d == Directive::Rmw ? 2 : 1);
}

void Assembly::Pass2(Line& line, int number)
{
    listAddress_ = NoAddress;
    code_.clear();
    if (line.comment)
        return;
    // The fields are read again rather than kept.
    fields_ = SplitLine(text_);
    const SourceLine& f = fields_;
    keyword_ = f.mnemonic.empty() ? Keyword{} : FindKeyword(f.mnemonic);
    form_ = line.form == NoForm ? nullptr : &AllInstructions()[line.form];
    symbol_ = -1;
    if (!f.label.empty() && !line.noSymbol) {
        const auto it = index_.find(f.label);
        symbol_ = it == index_.end() ? -1 : it->second;
    }
    const Directive d = keyword_.directive;
    if (d == Directive::Org) {
        if (!line.skip)
            pc_ = line.address;
        listAddress_ = pc_;
        return;
    }
    if (d == Directive::Equ || d == Directive::Set) {
        if (line.skip || symbol_ < 0)
            return;
        Symbol& s = symbols_[symbol_];
        std::int32_t value = 0;
        if (d == Directive::Set) {
            if (Value(OperandField(f.rest), number, value)) {
                s.value = value;
                s.state = SymbolState::Known;
                listAddress_ = value & 0xFFFF;
            }
            return;
        }
        if (s.state == SymbolState::Pending)
            Resolve(s);
        if (s.state == SymbolState::Known)
            listAddress_ = s.value & 0xFFFF;
        else if (s.line == number)
            Error(number, s.why.empty() ? "bad EQU value " + Quote(OperandField(f.rest)) : s.why);
        return;
    }

    // Every other line sits at the location counter; a label here must
    // have the value that the first pass gave it.
    if (symbol_ >= 0) {
        const Symbol& s = symbols_[symbol_];
        if (s.location && s.line == number && s.value != pc_)
            Error(number, "phase error: " + Quote(s.name) + " was " + Hex4(s.value) + " in the first pass, "
                              + Hex4(pc_) + " in the second");
    }
    if (!f.label.empty() || keyword_.instruction || (d != Directive::None && d != Directive::Ignored && d != Directive::End))
        listAddress_ = pc_;
    if (d == Directive::End) {
        const std::string_view text = OperandField(f.rest);
        std::int32_t start = 0;
        if (!text.empty() && Value(text, number, start) && InRange(text, number, start, 0, 0xFFFF)) {
            start_ = start;
        }
        return;
    }
    if (!line.skip && !line.noEmit) {
        if (form_) {
            ParseOperand(*keyword_.instruction, f.rest, operand_);
            EmitInstruction(number);
        }
        else if (d != Directive::None && d != Directive::Ignored)
            EmitData(line, number);
    }
    pc_ = std::int32_t((std::uint32_t(pc_) + line.size) & 0xFFFF);
}

void Assembly::EmitInstruction(int number)
{
    const Instruction& form = *form_;
    const Operand& op = operand_;
    if (form.page)
        Emit(form.page);
    Emit(form.opcode);

    auto byteOf = [&](std::string_view text, std::int32_t low, std::int32_t high) {
        std::int32_t v = 0;
        if (text.empty())
            return std::uint8_t(0);   // ",X" is offset 0
        if (Value(text, number, v) && InRange(text, number, v, low, high))
            return std::uint8_t(v);
        return std::uint8_t(0);
    };
    auto branch = [&](std::string_view text) {
        std::int32_t target = 0;
        if (!Value(text, number, target))
            return std::uint8_t(0);
        const int distance = BranchDistance(std::uint16_t(pc_ + form.length), std::uint16_t(target));
        if (distance > 127 || distance < -128) {
            Error(number, "branch out of range by " + std::to_string(distance > 127 ? distance - 127 : -128 - distance)
                              + " bytes: " + Quote(text));
            return std::uint8_t(0);
        }
        return std::uint8_t(distance);
    };

    // The items stand in the order of the format's fields: address, mask, target.
    const std::string_view items[] = {op.address, op.mask, op.target};
    const OperandFormat format = FormatOf(form.mode);
    for (std::size_t i = 0; i < format.fields.size(); ++i) {
        switch (format.fields[i]) {
        case Field::None: return;
        case Field::Byte: Emit(byteOf(items[i], format.immediate ? -128 : 0, 0xFF)); break;
        case Field::Mask: Emit(byteOf(items[i], -128, 0xFF)); break;
        case Field::Offset: Emit(branch(items[i])); break;
        case Field::Word: {
            std::int32_t v = 0;
            if (!Value(items[i], number, v) || !InRange(items[i], number, v, -0x8000, 0xFFFF))
                v = 0;
            Emit(std::uint8_t(v >> 8));
            Emit(std::uint8_t(v));
            break;
        }
        }
    }
}

void Assembly::EmitData(Line& line, int number)
{
    const Directive d = keyword_.directive;
    const std::string_view rest = fields_.rest;
    if (d == Directive::Fcc) {
        for (char c : rest.substr(1, line.size))
            Emit(std::uint8_t(c));
        return;
    }
    if (d == Directive::Rmb || d == Directive::Rmw)
        return;   // reserved, not written
    const std::string_view field = OperandField(rest);
    SplitItems(field, items_);
    if (d == Directive::Fcb || d == Directive::Fdb) {
        for (const std::string_view item : items_) {
            std::int32_t v = 0;
            if (item.empty())
                Error(number, "missing value in " + Quote(field));
            else if (!Value(item, number, v) || !(d == Directive::Fcb ? InRange(item, number, v, -128, 0xFF)
                                                                      : InRange(item, number, v, -0x8000, 0xFFFF)))
                v = 0;
            if (d == Directive::Fdb)
                Emit(std::uint8_t(v >> 8));
            Emit(std::uint8_t(v));
        }
        return;
    }
    std::int32_t fill = 0;
    if (d == Directive::Fill && !(Value(items_[0], number, fill) && InRange(items_[0], number, fill, -128, 0xFF)))
        fill = 0;
    code_.insert(code_.end(), line.size, std::uint8_t(fill));
}

void Assembly::ListLine(int number, std::size_t firstPass2Error)
{
    AppendListingLine(*listing_, number, listAddress_, code_.data(), code_.size(), text_);
    for (; nextFirstPassError_ < firstPassErrors_.size() && firstPassErrors_[nextFirstPassError_].line == number;
         ++nextFirstPassError_)
        AppendListingNote(*listing_, "error: " + firstPassErrors_[nextFirstPassError_].message);
    for (std::size_t e = firstPass2Error; e < errors_.size(); ++e)
        AppendListingNote(*listing_, "error: " + errors_[e].message);
    if (!code_.empty())
        s19_->Data(std::uint16_t(listAddress_), code_.data(), code_.size());
}

void Assembly::WriteSymbolTable(std::string& lst)
{
    lst += "\nSymbol Table\n\n";
    std::vector<const Symbol*> sorted;
    sorted.reserve(symbols_.size());
    for (const Symbol& s : symbols_)
        sorted.push_back(&s);
    std::sort(sorted.begin(), sorted.end(), [](const Symbol* a, const Symbol* b) { return a->name < b->name; });
    for (const Symbol* s : sorted)
        AppendSymbolRow(lst, s->name, s->state == SymbolState::Known ? s->value : 0);
}

AssemblyResult Assembly::Run(std::string_view source, std::string_view moduleName)
{
    lines_.resize(LineReader::Count(source));
    index_.reserve(lines_.size() / 4 + 16);

    LineReader first(source);
    std::size_t endLine = lines_.size();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        first.Next(text_);
        Pass1(lines_[i], int(i + 1));
        if (keyword_.directive == Directive::End) {
            endLine = i + 1;   // after END nothing is read
            break;
        }
    }

    // The second pass writes the listing and the S-records as it goes.
    AssemblyResult result;
    // Columns 1-27 on every line, continuation lines for long data, and
    // the symbol table: one allocation for nearly every source.
    result.listing.reserve(source.size() + lines_.size() * 28 + emitted_ * 6 + symbols_.size() * 40 + 4096);
    result.s19.reserve(emitted_ * 2 + emitted_ / 8 + 64);
    S19Writer s19(result.s19, moduleName);
    listing_ = &result.listing;
    s19_ = &s19;
    pass_ = 2;
    pc_ = 0;
    LineReader second(source);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        second.Next(text_);
        const std::size_t firstError = errors_.size();
        if (i < endLine) {
            Pass2(lines_[i], int(i + 1));
        } else {
            listAddress_ = NoAddress;
            code_.clear();
        }
        ListLine(int(i + 1), firstError);
    }
    s19.End(std::uint16_t(start_));
    WriteSymbolTable(result.listing);

    // Both passes report in line order; a line's first-pass errors come first.
    result.errors.reserve(firstPassErrors_.size() + errors_.size());
    std::merge(std::make_move_iterator(firstPassErrors_.begin()), std::make_move_iterator(firstPassErrors_.end()),
               std::make_move_iterator(errors_.begin()), std::make_move_iterator(errors_.end()),
               std::back_inserter(result.errors),
               [](const AsmError& a, const AsmError& b) { return a.line < b.line; });
    result.listing += '\n';
    result.listing += std::to_string(result.errors.size());
    result.listing += result.errors.size() == 1 ? " error\n" : " errors\n";
    return result;
}

} // namespace

std::string AssemblyResult::ErrorFileText() const
{
    std::string text;
    for (const AsmError& e : errors)
        text += std::to_string(e.line) + ": " + e.message + "\n";
    return text;
}

AssemblyResult AssembleSource(std::string_view source, std::string_view moduleName)
{
    // Editors that save UTF-8 may start the file with a byte order mark; it is
    // no part of the first line.
    if (source.starts_with("\xEF\xBB\xBF"))
        source.remove_prefix(3);
    return Assembly().Run(source, moduleName);
}

} // namespace hc11::as11
