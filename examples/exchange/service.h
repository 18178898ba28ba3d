// What a fracture server does for one client.
#ifndef KORBASE_EXAMPLES_EXCHANGE_SERVICE_H
#define KORBASE_EXAMPLES_EXCHANGE_SERVICE_H

namespace exchange {

// Answers the requests that come over `fd`, a connected socket, until the client closes. True if it
// has asked the server to end. Waits up to `seconds` for the client each time. Throws a SockIO
// exception if the client is too slow, vanishes inside a request or breaks the rules.
bool Serve(int fd, unsigned seconds);

}  // namespace exchange

#endif
