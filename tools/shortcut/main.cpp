// quorvi-shortcut [WORD [PROGRAM ARGUMENT…]]: what a desktop runs at each press and at each
// auto-repeat of a key that it has bound. Tells the running Quorvi the word, "dictate" if there is
// none, and waits for nothing. If Quorvi does not hear, becomes the program. With "guard", becomes
// the program when the socket at its standard input is closed without a message.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "Quorvi/platform/linux/shortcuts/CommandAddress.h"

int main(int argc, char** argv) {
    const char* word = argc > 1 ? argv[1] : quorvi::dictateWord;
    if (argc > 2 && std::strcmp(word, quorvi::guardWord) == 0) {
        char message;
        return recv(STDIN_FILENO, &message, sizeof message, 0) > 0 ? 0 : execv(argv[2], argv + 2);
    }
    sockaddr_un address{};
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (quorvi::fill(address, quorvi::commandAddress()) &&
        sendto(socket, word, std::strlen(word), MSG_DONTWAIT,
               reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0)
        return 0;
    if (argc > 2) execv(argv[2], argv + 2);
    return 1;
}
