#include "platform/adodb/store/Slab.h"

#include <cstdint>
#include <new>

#if defined(__unix__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace norvel::adodb {

namespace {

constexpr std::size_t alignment = 64;

#if defined(__unix__)
// Large groups get pages of their own: the allocator would keep them after a Close, and round them
// up. Where the system has huge pages they start on one, and only what fills whole ones asks for
// them: a fault a page is a good part of the cost of a fetch, a huge page half used is memory lost.
constexpr std::size_t ownPages = std::size_t{256} * 1024;
constexpr std::size_t hugePage = std::size_t{2} * 1024 * 1024;

std::size_t roundedUp(std::size_t bytes, std::size_t to) {
    return (bytes + to - 1) / to * to;
}

std::byte* mapPages(std::size_t bytes) {
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) throw std::bad_alloc();
    return static_cast<std::byte*>(pages);
}

// Maps more than asked and gives back what lies before the first huge page and behind the end.
std::byte* mapAligned(std::size_t bytes) {
    const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t wanted = roundedUp(bytes, page);
    std::byte* pages = mapPages(wanted + hugePage);
    const auto address = reinterpret_cast<std::uintptr_t>(pages);
    const std::size_t before = roundedUp(address, hugePage) - address;
    if (before != 0) munmap(pages, before);
    if (before != hugePage) munmap(pages + before + wanted, hugePage - before);
    return pages + before;
}

std::byte* allocate(std::size_t bytes) {
    if (bytes < ownPages)
        return static_cast<std::byte*>(::operator new (bytes, std::align_val_t{alignment}));
    if (bytes < hugePage) return mapPages(bytes);
    std::byte* pages = mapAligned(bytes);
#if defined(MADV_HUGEPAGE)
    madvise(pages, bytes / hugePage * hugePage, MADV_HUGEPAGE); // advice: it may be refused
#endif
    return pages;
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
