#include "hc11/asm/AsmKeywords.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace hc11::as11 {
namespace {

class KeywordTable {
public:
    KeywordTable()
    {
        for (const Instruction& row : AllInstructions()) {
            InstructionForms& f = forms_[static_cast<int>(row.mnemonic)];
            f.mnemonic = row.mnemonic;
            f.byMode[static_cast<int>(row.mode)] = &row;
        }
        for (int m = 0; m < MnemonicCount; ++m)
            words_[std::string(MnemonicName(Mnemonic(m)))] = Keyword{&forms_[m], Directive::None};

        // The other spellings of the processor's manual, then those that
        // Motorola's own assemblers took from the 6800 and 6809 (LDA, STA,
        // ORA; CMPD for CPD), so that sources written for them assemble
        // unchanged. Each names a row of the one instruction table.
        const std::pair<const char*, Mnemonic> aliases[] = {
            {"ASL", Mnemonic::LSL},   {"ASLA", Mnemonic::LSLA}, {"ASLB", Mnemonic::LSLB},
            {"ASLD", Mnemonic::LSLD}, {"BHS", Mnemonic::BCC},   {"BLO", Mnemonic::BCS},
            {"LDA", Mnemonic::LDAA},  {"LDB", Mnemonic::LDAB},  {"STA", Mnemonic::STAA},
            {"STB", Mnemonic::STAB},  {"ORA", Mnemonic::ORAA},  {"ORB", Mnemonic::ORAB},
            {"CMPD", Mnemonic::CPD},  {"CMPX", Mnemonic::CPX},  {"CMPY", Mnemonic::CPY},
        };
        for (const auto& [name, target] : aliases)
            words_[name] = Keyword{&forms_[static_cast<int>(target)], Directive::None};

        const std::pair<const char*, Directive> directives[] = {
            {"ORG", Directive::Org},  {"EQU", Directive::Equ},     {"SET", Directive::Set},
            {"FCB", Directive::Fcb},  {"FDB", Directive::Fdb},     {"FCC", Directive::Fcc},
            {"RMB", Directive::Rmb},  {"RMW", Directive::Rmw},     {"BSZ", Directive::Bsz},
            {"ZMB", Directive::Zmb},  {"FILL", Directive::Fill},   {"END", Directive::End},
            {"OPT", Directive::Ignored}, {"PAGE", Directive::Ignored}, {"NAM", Directive::Ignored},
            {"TTL", Directive::Ignored}, {"SPC", Directive::Ignored},
        };
        for (const auto& [name, directive] : directives)
            words_[name] = Keyword{nullptr, directive};
        for (const auto& [word, keyword] : words_)
            longest_ = std::max(longest_, word.size());
    }

    Keyword Find(std::string_view word) const
    {
        if (word.empty() || word.size() > longest_)
            return {};
        char upper[8];
        for (std::size_t i = 0; i < word.size(); ++i) {
            const char c = word[i];
            upper[i] = (c >= 'a' && c <= 'z') ? char(c - 'a' + 'A') : c;
        }
        const auto it = words_.find(std::string_view(upper, word.size()));
        return it == words_.end() ? Keyword{} : it->second;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
    };
    std::array<InstructionForms, MnemonicCount> forms_{};
    std::unordered_map<std::string, Keyword, Hash, std::equal_to<>> words_;
    std::size_t longest_ = 0;
};

} // namespace

Keyword FindKeyword(std::string_view word)
{
    static const KeywordTable table;
    return table.Find(word);
}

} // namespace hc11::as11
