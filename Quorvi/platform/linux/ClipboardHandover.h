#pragma once

#include <string>
#include <vector>

#include "Quorvi/platform/Pasteboard.h"

// What is on an X11 clipboard ends with the program that offers it. A program that quits hands its
// content over to a keeper, a small process that offers it until somebody copies something else.
namespace quorvi {

// The content as one block of bytes, and back. Decoding throws QuorviError when the bytes are no
// such block.
Bytes encodeClipboard(const std::vector<PasteboardItem>& items);
std::vector<PasteboardItem> decodeClipboard(const Bytes& bytes);

// Starts the keeper program with the content as its standard input, which is memory and no file.
// False when that is not possible. Returns at once; the keeper takes the clipboard a few
// milliseconds later.
bool startClipboardKeeper(const std::string& program, const std::vector<PasteboardItem>& items);

}  // namespace quorvi
