// What the runtime does about an exception that nobody catches. Its own handler prints the exception's type
// in plain words, for which it brings along a reader of mangled names, a thirtieth of the whole program.
#include <cstdlib>

namespace __gnu_cxx {

void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx
