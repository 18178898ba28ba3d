// Buffer<T>, OutputBuffer<T>, InputBuffer<T>: storage with one position, and what happens at its
// end: a derived class says where the elements go or come from.
//
// Streams move whole pieces while there is room or data: PutByte and GetByte, which may be
// overridden, are called for the one element that meets a full or an empty buffer.
#ifndef KORBASE_NET_BUFFER_H
#define KORBASE_NET_BUFFER_H

#include <korbase_api.h>

template <class T>
class Buffer {
public:
    // Owned storage for `n` elements, not initialised; for 1 if `n` is 0.
    Buffer() : Buffer(1024u) {}
    explicit Buffer(unsigned n)
        : base(new T[n ? n : 1]),
          end(base + (n ? n : 1)),
          cur(base),
          size(n ? n : 1),
          external(0) {}
    // The `n` elements at `p`, which stay the caller's and have to outlive the buffer.
    Buffer(T* p, unsigned n) : base(p), end(p + n), cur(p), size(n), external(1) {}
    Buffer(Buffer const&) = delete;
    Buffer& operator=(Buffer const&) = delete;

    // Releases owned storage and uses the `n` elements at `p` instead, from their start.
    void Set(T* p, unsigned n) {
        Release();
        base = cur = p;
        end = p + n;
        size = n;
        external = 1;
    }

    virtual ~Buffer() { Release(); }

protected:
    T* base;        // the first element
    T* end;         // behind the storage (output) or behind the valid data (input)
    T* cur;         // where the next element is put or read
    unsigned size;  // capacity in elements

private:
    void Release() {
        if (!external) delete[] base;
    }

    int external;  // 1: the storage belongs to somebody else
};

// Starts empty: base to cur is what waits to be flushed.
template <class T>
class OutputBuffer : public Buffer<T> {
public:
    using Buffer<T>::Buffer;

    // Sends the elements from base to cur and moves cur back. Returns their number, or a negative
    // value after a failure.
    virtual int Flush() = 0;

    // Stores *p, after a Flush if the buffer is full; if there is still no room the element is not
    // stored. Returns 0, or what Flush returned.
    virtual int PutByte(T const* p) {
        int result = 0;
        if (this->cur == this->end) {
            result = Flush();
            if (this->cur == this->end) return result;
        }
        *this->cur++ = *p;
        return result;
    }
};

// Starts empty: cur to end is what has not been read yet.
template <class T>
class InputBuffer : public Buffer<T> {
public:
    InputBuffer() { Drop(); }
    explicit InputBuffer(unsigned n) : Buffer<T>(n) { Drop(); }
    InputBuffer(T* p, unsigned n) : Buffer<T>(p, n) { Drop(); }

    // As in Buffer; the new storage is empty, too.
    void Set(T* p, unsigned n) {
        Buffer<T>::Set(p, n);
        Drop();
    }

    // Refills the empty buffer. Returns the number of elements obtained, 0 or negative for none.
    virtual int Fill() = 0;

    // Delivers the next element to *p, after a Fill if the buffer is empty. Returns 1, or what Fill
    // returned if that is below 1.
    virtual int GetByte(T* p) {
        if (this->cur == this->end) {
            int const count = Fill();
            if (count < 1) return count;
        }
        *p = *this->cur++;
        return 1;
    }

private:
    void Drop() { this->cur = this->end; }
};

extern template class KORBASE_API Buffer<char>;  // net/buffer.cc
extern template class KORBASE_API OutputBuffer<char>;
extern template class KORBASE_API InputBuffer<char>;

#endif
