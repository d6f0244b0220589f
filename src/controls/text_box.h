#pragma once

#include "controls/control.h"

namespace nrv::controls {

/// Character codes of the keys that a text box's event tells apart from what is typed.
inline constexpr char BackspaceKey = 8;
inline constexpr char EnterKey = 13;

/// What becomes of a key: the character that enters the box, 0 for none, and whether it stands for one that was
/// refused.
struct KeyEntry {
    constexpr KeyEntry(char entering, bool refused = false) : Entering(entering), Refused(refused) {}
    char Entering;
    bool Refused;
    friend constexpr bool operator==(const KeyEntry& entry, char character) { return entry.Entering == character; }
};

/// A line of text. Setting the text in code runs nothing, and puts an end to what stood typed and not entered.
class TextBox : public Control {
  public:
    static constexpr std::size_t NoLimit = 0;

    std::function<KeyEntry(char)> KeyPressed;

    const std::string& Text() const { return text_; }
    void SetText(const std::string& text) {
        const bool changes = Typed() || text != text_;
        entered_ = text;
        text_ = text;
        if (changes) {
            Notify(Aspect::Text);
        }
    }
    /// The view's word on what the user has made of the text.
    void UserText(const std::string& text) { text_ = text; }
    KeyEntry UserKey(char key) {
        const KeyEntry entry = KeyPressed ? KeyPressed(key) : key;
        if (key == EnterKey && entry == key && !entry.Refused && Typed()) {
            entered_ = text_; // an event may leave the text as it was typed
            Notify(Aspect::Text);
        }
        return entry;
    }
    /// The user has made another text of it and has not entered that.
    bool Typed() const { return text_ != entered_; }
    /// The text that holds, whatever the user has made of it since.
    const std::string& Entered() const { return entered_; }
    /// Puts the text back that stood before the user typed.
    void TakeBack() { SetText(std::string(entered_)); }
    /// Asks the view to give the box the keyboard with its text selected.
    void Attend() { Notify(Aspect::Attention); }

    std::size_t MaxLength() const { return max_length_; }
    void SetMaxLength(std::size_t length) { Assign(max_length_, length, Aspect::Items); }
    /// A locked box shows its text and cannot be edited.
    bool Locked() const { return locked_; }
    void SetLocked(bool locked) { Assign(locked_, locked, Aspect::Items); }
    /// A mark in the box's back colour; none is the window's own.
    bool Marked() const { return marked_; }
    void SetMarked(bool marked) { Assign(marked_, marked, Aspect::Colour); }

  private:
    std::string text_;
    std::string entered_; ///< what stood before the user typed
    std::size_t max_length_ = NoLimit;
    bool locked_ = false;
    bool marked_ = false;
};

} // namespace nrv::controls
