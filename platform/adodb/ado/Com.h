// The system's COM headers, and the owners of what COM hands out. For the folders that speak COM.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <oaidl.h>
#include <ocidl.h>
#include <oleauto.h>
#include <string>
#include <string_view>
#include <utility>
#include <windows.h>

// COM's interfaces have no virtual destructor: objects end themselves by Release.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace norvel::com {

// A counted reference.
template <class T>
class ComPtr {
  public:
    ComPtr() = default;
    ComPtr(const ComPtr& other) : ComPtr(keep(other.pointer_)) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~ComPtr() {
        if (pointer_) pointer_->Release();
    }
    // The reference that the caller owns.
    static ComPtr adopt(T* pointer) {
        ComPtr owner;
        owner.pointer_ = pointer;
        return owner;
    }
    // One reference more.
    static ComPtr keep(T* pointer) {
        if (pointer) pointer->AddRef();
        return adopt(pointer);
    }

    T* get() const { return pointer_; }
    T* operator->() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }
    // For calls that hand out a reference; what was held is let go.
    T** put() {
        *this = ComPtr();
        return &pointer_;
    }
    T* detach() { return std::exchange(pointer_, nullptr); }

    // The object's other face; null where it has none.
    template <class Other>
    ComPtr<Other> as(REFIID iid) const {
        ComPtr<Other> other;
        void* found = nullptr;
        if (pointer_ && SUCCEEDED(pointer_->QueryInterface(iid, &found)))
            other = ComPtr<Other>::adopt(static_cast<Other*>(found));
        return other;
    }

  private:
    T* pointer_ = nullptr;
};

// The text of a BSTR, which may be null (the empty text) and may hold zeros.
std::string textOf(BSTR text);
// Bytes that are not UTF-8 are read as Windows-1252. The caller frees it with SysFreeString. Raises
// 7 where there is no memory.
BSTR newBstr(std::string_view text);

} // namespace norvel::com
