// Short replacements for the C++ runtime's error functions. The originals build messages that nobody sees in another
// program's process, and they pull in 45 KB of code for type names and 50 KB for both of its string types. If the
// linker reports one of these functions as defined twice, another of this group is in use: replace that one here too.
#include <cstdlib>
#include <exception>
#include <new>
#include <string>

// Runs when no one catches an exception.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

void std::__throw_bad_alloc() {
    throw std::bad_alloc();
}

void std::__throw_bad_array_new_length() {
    throw std::bad_alloc();
}

// There is no memory for something longer than a container can be, either.
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
