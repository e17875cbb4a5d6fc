// Short forms of what the C++ runtime does at errors. Its own build texts that nobody sees in another program's
// process, and with them come 45 KB that read the names of types, and 50 KB of strings of both its kinds. A function of
// this group that the linker finds twice has become needed: give it its short form here too.
#include <cstdlib>
#include <exception>
#include <new>
#include <string>

// What runs when nobody catches an exception.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

void std::__throw_bad_alloc() {
    throw std::bad_alloc();
}

void std::__throw_bad_array_new_length() {
    throw std::bad_alloc();
}

// Longer than a container can be: there is no memory for it either.
void std::__throw_length_error(const char* /*where*/) {
    throw std::bad_alloc();
}

void std::__throw_logic_error(const char* /*what*/) {
    throw std::exception();
}

// NOLINTNEXTLINE(cert-dcl50-cpp): the library declares it so.
void std::__throw_out_of_range_fmt(const char* /*format*/, ...) {
    throw std::exception();
}
