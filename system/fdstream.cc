#include "system/fdstream.h"

namespace std {

template class basic_fdfilebuf<char>;
template class fdstream_of<basic_iostream<char>, ios_base::openmode{},
                           ios_base::in | ios_base::out>;
template class fdstream_of<basic_istream<char>, ios_base::in, ios_base::in>;
template class fdstream_of<basic_ostream<char>, ios_base::out, ios_base::out>;
template class basic_fdstream<char>;
template class basic_ifdstream<char>;
template class basic_ofdstream<char>;

}  // namespace std
