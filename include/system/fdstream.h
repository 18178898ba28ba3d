// Streams over open descriptors, beside the standard file streams and used like them.
//
// A descriptor that was attached belongs to the stream, which closes it. Failures set failbit;
// attach and open do not clear a state of before. A stream belongs to one thread at a time.
#ifndef KORBASE_SYSTEM_FDSTREAM_H
#define KORBASE_SYSTEM_FDSTREAM_H

#include <korbase_api.h>

#include <fstream>
#include <istream>
#include <ostream>

// In the standard library's namespace by design, and over its file buffer of this platform.
namespace std {

// A file buffer that takes over open descriptors. Instantiated for char.
template <class CharT, class Traits = char_traits<CharT>>
class KORBASE_API basic_fdfilebuf : public basic_filebuf<CharT, Traits> {
public:
    basic_fdfilebuf() = default;
    ~basic_fdfilebuf() override = default;  // flushes and closes

    // Takes over `fd`, for reading and writing as `mode` says; `ate` goes to the end of the file.
    // Returns this, or null and leaves `fd` to the caller: if a file is open already, or if `mode`
    // is not one that files can be opened in or not allowed by `fd`. Kept: when going to the end
    // fails, the result is null, too, and `fd` is closed.
    basic_fdfilebuf* attach(int fd, ios_base::openmode mode);

    // The descriptor of the open file, -1 if there is none.
    int fd() { return this->is_open() ? this->_M_file.fd() : -1; }
};

// What the three streams have in common: a `Stream` over a buffer whose files are opened with
// `forced` added to every mode.
template <class Stream, ios_base::openmode forced, ios_base::openmode usual>
class KORBASE_API fdstream_of : public Stream {
public:
    using buffer_type = basic_fdfilebuf<typename Stream::char_type, typename Stream::traits_type>;

    fdstream_of() : Stream(nullptr) { this->init(&buffer); }
    explicit fdstream_of(int fd) : fdstream_of() { attach(fd, usual); }
    explicit fdstream_of(char const* path, ios_base::openmode mode = usual) : fdstream_of() {
        open(path, mode);
    }

    void attach(int fd, ios_base::openmode mode = usual) {
        if (!buffer.attach(fd, mode | forced)) this->setstate(ios_base::failbit);
    }
    void open(char const* path, ios_base::openmode mode = usual) {
        if (!buffer.open(path, mode | forced)) this->setstate(ios_base::failbit);
    }
    // Flushes and closes; fails also if nothing is open.
    void close() {
        if (!buffer.close()) this->setstate(ios_base::failbit);
    }
    bool is_open() const { return buffer.is_open(); }
    buffer_type* rdbuf() const { return const_cast<buffer_type*>(&buffer); }

private:
    buffer_type buffer;
};

template <class CharT, class Traits = char_traits<CharT>>
class KORBASE_API basic_fdstream
    : public fdstream_of<basic_iostream<CharT, Traits>, ios_base::openmode{},
                         ios_base::in | ios_base::out> {
    using Base = fdstream_of<basic_iostream<CharT, Traits>, ios_base::openmode{},
                             ios_base::in | ios_base::out>;

public:
    using Base::Base;
};

template <class CharT, class Traits = char_traits<CharT>>
class KORBASE_API basic_ifdstream
    : public fdstream_of<basic_istream<CharT, Traits>, ios_base::in, ios_base::in> {
    using Base = fdstream_of<basic_istream<CharT, Traits>, ios_base::in, ios_base::in>;

public:
    using Base::Base;
};

template <class CharT, class Traits = char_traits<CharT>>
class KORBASE_API basic_ofdstream
    : public fdstream_of<basic_ostream<CharT, Traits>, ios_base::out, ios_base::out> {
    using Base = fdstream_of<basic_ostream<CharT, Traits>, ios_base::out, ios_base::out>;

public:
    using Base::Base;
};

using fdstream = basic_fdstream<char>;
using ifdstream = basic_ifdstream<char>;
using ofdstream = basic_ofdstream<char>;

template <class CharT, class Traits>
basic_fdfilebuf<CharT, Traits>* basic_fdfilebuf<CharT, Traits>::attach(int fd,
                                                                       ios_base::openmode mode) {
    if (this->is_open() || !this->_M_file.sys_open(fd, mode)) return nullptr;
    // From here on as in basic_filebuf::open.
    this->_M_allocate_internal_buffer();
    this->_M_mode = mode;
    this->_M_reading = false;
    this->_M_writing = false;
    this->_M_set_buffer(-1);
    this->_M_state_last = this->_M_state_cur = this->_M_state_beg;
    if ((mode & ios_base::ate) != 0) {
        auto const end = this->seekoff(0, ios_base::end, mode);
        if (end == typename Traits::pos_type(typename Traits::off_type(-1))) {
            this->close();
            return nullptr;
        }
    }
    return this;
}

extern template class KORBASE_API basic_fdfilebuf<char>;
extern template class KORBASE_API
    fdstream_of<basic_iostream<char>, ios_base::openmode{}, ios_base::in | ios_base::out>;
extern template class KORBASE_API fdstream_of<basic_istream<char>, ios_base::in, ios_base::in>;
extern template class KORBASE_API fdstream_of<basic_ostream<char>, ios_base::out, ios_base::out>;
extern template class KORBASE_API basic_fdstream<char>;
extern template class KORBASE_API basic_ifdstream<char>;
extern template class KORBASE_API basic_ofdstream<char>;

}  // namespace std

#endif
