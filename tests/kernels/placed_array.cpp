// SPDX-License-Identifier: Apache-2.0
#include "placed_array.h"

#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <limits>

namespace {

sigjmp_buf back_to_the_test;
const void* volatile touched;

void on_fault(int, siginfo_t* info, void*) {
    touched = info->si_addr;
    siglongjmp(back_to_the_test, 1);
}

}  // namespace

const char* name_of(placement where) {
    constexpr const char* names[] = {"between guard zones", "ending at a page", "starting at a page"};
    return names[int(where)];
}

template <class T>
placed<T>::placed(size_t count, placement where) {
    if (where == placement::between_guards) {
        size_ = count + 2 * guard;
        floats_.resize(size_);
        begin_ = floats_.data();
        data_ = begin_ + guard;
    } else {
        map_pages(count, where == placement::ends_at_page);
    }
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::fill_n(reinterpret_cast<float*>(begin_), size_ * sizeof(element) / sizeof nan, nan);
}

// A page that must not be touched, pages for the layout and one guard zone, a page that must not be touched.
template <class T>
void placed<T>::map_pages(size_t count, bool at_end) {
    const size_t page = sysconf(_SC_PAGESIZE);
    size_ = count + guard;
    const size_t inner = (size_ * sizeof(element) + page - 1) / page * page;
    pages_size_ = inner + 2 * page;
    void* pages = mmap(nullptr, pages_size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) std::abort();
    pages_ = static_cast<char*>(pages);
    if (mprotect(pages_ + page, inner, PROT_READ | PROT_WRITE) != 0) std::abort();
    begin_ = reinterpret_cast<element*>(pages_ + page + (at_end ? inner - size_ * sizeof(element) : 0));
    data_ = begin_ + (at_end ? guard : 0);
}

template <class T>
placed<T>::~placed() {
    if (pages_) munmap(pages_, pages_size_);
}

template <class T>
bool placed<T>::owns(const void* address) const {
    const char* a = static_cast<const char*>(address);
    return a >= pages_ && a < pages_ + pages_size_;
}

template class placed<float>;
template class placed<std::complex<float>>;

bool survives(const std::function<void()>& call, const void*& address) {
    struct sigaction ours{}, before_segv, before_bus;
    ours.sa_sigaction = on_fault;
    ours.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigaction(SIGSEGV, &ours, &before_segv);
    sigaction(SIGBUS, &ours, &before_bus);
    const bool returned = sigsetjmp(back_to_the_test, 1) == 0;
    if (returned) call();
    sigaction(SIGSEGV, &before_segv, nullptr);
    sigaction(SIGBUS, &before_bus, nullptr);
    address = touched;
    return returned;
}
