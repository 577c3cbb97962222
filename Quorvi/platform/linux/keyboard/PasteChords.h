#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvi {

// A key combination that programs paste with, by what its keys type.
enum class PasteChord {
    none,  // the program has no key for it
    controlV,
    controlShiftV,
    controlAltV,
    shiftInsert,
    controlShiftInsert,
};

// Which combination pastes the clipboard in which program: a table, with the user's lines before
// it. A plain value.
class PasteChords {
public:
    struct Choice {
        PasteChord chord = PasteChord::controlV;
        // Under a layout without the letter V, such as a lone Cyrillic one, where many programs
        // find no V in any group. One with a V means the key in V's place.
        PasteChord withoutV = PasteChord::shiftInsert;
        // Whether the program also finds the V of a group that is not the current one.
        bool searchesGroups = true;
        // Whether a new clipboard can't be pasted until the program has looked what it offers.
        bool looksFirst = false;
    };

    // `users` has a line "PROGRAM CHORD" for each program: either part of its window's WM_CLASS,
    // and control-v, control-shift-v, control-alt-v, shift-insert, control-shift-insert or none.
    // What follows # is a comment; lines that mean nothing are passed over.
    explicit PasteChords(std::string_view users = {});

    // The choice for a window of this class, whatever its case.
    Choice of(std::string_view instance, std::string_view className) const;

private:
    struct Line {
        std::string program;  // lower case
        PasteChord chord;
    };

    std::vector<Line> users_;
};

}  // namespace quorvi
