#include "platform/adodb/store/Slab.h"

#include <new>

#if defined(__unix__)
#include <sys/mman.h>
#endif

namespace norvel::adodb {

namespace {

constexpr std::size_t alignment = 64;

#if defined(__unix__)
// Large groups get pages of their own: the allocator would keep them after a Close, and round them
// up.
constexpr std::size_t ownPages = std::size_t{256} * 1024;

std::byte* allocate(std::size_t bytes) {
    if (bytes < ownPages)
        return static_cast<std::byte*>(::operator new (bytes, std::align_val_t{alignment}));
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) throw std::bad_alloc();
    return static_cast<std::byte*>(pages);
}

void release(std::byte* data, std::size_t bytes) {
    if (bytes < ownPages)
        ::operator delete (data, std::align_val_t{alignment});
    else
        munmap(data, bytes);
}
#else
std::byte* allocate(std::size_t bytes) {
    return static_cast<std::byte*>(::operator new (bytes, std::align_val_t{alignment}));
}

void release(std::byte* data, std::size_t) {
    ::operator delete (data, std::align_val_t{alignment});
}
#endif

} // namespace

Slab::Slab(std::size_t bytes) : data_(bytes ? allocate(bytes) : nullptr), size_(bytes) {}

Slab::~Slab() {
    if (data_) release(data_, size_);
}

} // namespace norvel::adodb
