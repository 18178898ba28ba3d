// ipstream and opstream: the output of a command as an input stream, and the reverse.
//
// Commands are split and started as by Process::Execute(char const*), with no shell, and keep our
// standard descriptors but for the one that is the pipe. Closing the stream waits for the command.
// A stream belongs to one thread at a time. Commands started by other threads do not hold its pipe
// open. Kept: closing an ipstream closes the number of its descriptor twice, so that a descriptor
// which another thread opens in between, and which gets that number, is lost.
#ifndef KORBASE_SYSTEM_PSTREAM_H
#define KORBASE_SYSTEM_PSTREAM_H

#include <korbase_api.h>
#include <system/fdstream.h>
#include <system/process.h>

// The pipe and the command at its other end.
class KORBASE_API pstream_base {
public:
    pstream_base() : fds{-1, -1} {}

    // Closes the read end if it is noted as open and waits for the command. Returns what
    // Process::WaitFor does, -1 without a command.
    int Close();

protected:
    // Starts the command with end `theirs` of a new pipe (0 or 1, also the descriptor that it is to
    // become), and attaches `buffer` to the other end. False on failure; the command has been
    // started, and child is its process, also if the buffer refused.
    bool Open(std::basic_fdfilebuf<char>& buffer, char const* command, int theirs);

    int fds[2];  // read end, write end; -1 where closed
    Process child;
};

// Reads what a command writes to its standard output.
class KORBASE_API ipstream : public std::basic_ifdstream<char>, public pstream_base {
public:
    ipstream() = default;
    explicit ipstream(char const* command) { open(command); }
    ~ipstream() override;  // closes; does not throw, whatever exceptions() says

    // Starts the command; the mode is ignored. A command that cannot be run shows as the end of
    // input and, at close(), as a failure. Not for a stream that is open: it fails, and yet runs
    // the command, which becomes the one that close() waits for.
    void open(char const* command, std::ios_base::openmode mode = std::ios_base::in);
    // Closes the pipe and waits for the command; fails if it was not open or if the command ended
    // with anything but exit code 0.
    void close();
};

// Writes what a command reads from its standard input. A command that stops reading ends this
// process by SIGPIPE, unless that is ignored (IgnoreSigPipe).
class KORBASE_API opstream : public std::basic_ofdstream<char>, public pstream_base {
public:
    opstream() = default;
    explicit opstream(char const* command) { open(command); }
    ~opstream() override;

    // As those of ipstream; close() flushes, and the command finds the end of its input.
    void open(char const* command, std::ios_base::openmode mode = std::ios_base::out);
    void close();
};

#endif
