#include "platform/PrivateSocket.h"

#include <sys/socket.h>

int openPrivateSocket(int family, int type, int protocol) {
    return ::socket(family, type | SOCK_CLOEXEC, protocol);
}
