#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zetui::ui {

class UI_Node;
class UI_SubView;

/// The letter that presses a control together with Alt.
struct Mnemonic
{
    wchar_t letter = 0;
    /// Its place in the text. A text without letters that keyboards have gets one behind it, in parentheses.
    std::optional<std::size_t> place;

    friend bool operator==(const Mnemonic&, const Mnemonic&) = default;
};

struct MnemonicText
{
    std::wstring text;
    /// The text in the language of the program, whose letters suit a text that has none of its own.
    std::wstring original;
};

/// A mnemonic for each text, no letter twice, whatever its case. A text that marks its letter itself ("&"
/// before it) keeps it and gets none. First letters of words are taken rather than others. Empty for a text
/// that goes without, because no letter is left.
std::vector<std::optional<Mnemonic>> ChooseMnemonics(const std::vector<MnemonicText>& texts);

/// The text with the mark of its mnemonic.
std::wstring MarkMnemonic(const std::wstring& text, const Mnemonic& mnemonic);

/// Gives the buttons, checkboxes and fields below the view mnemonics, on platforms that have them. The nodes'
/// texts and names stay as they are. A static text right before a field becomes its label. The nodes in
/// `withoutMnemonic` have keys of their own. Called again, it chooses anew.
void AssignMnemonics(UI_SubView& root, std::span<const UI_Node* const> withoutMnemonic);

} // namespace zetui::ui
