// The library's edge: class objects, registration, unloading.
#include "tests/windows/prova/Face.h"
#include "tests/windows/prova/Registration.h"

namespace norvel::prova {

namespace {

long locks = 0;

// Makes objects of one class.
class Factory : public IClassFactory {
  public:
    explicit Factory(const ServedClass& served) : served_(served) { ++locks; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
        *out = known ? static_cast<IClassFactory*>(this) : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override {
        const long left = --references_;
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        try {
            const auto face = faceOf(served_.make());
            return face->QueryInterface(iid, out);
        } catch (const std::exception&) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        locks += lock ? 1 : -1;
        return S_OK;
    }

  private:
    virtual ~Factory() { --locks; }
    const ServedClass& served_;
    long references_ = 1;
};

} // namespace

HRESULT classObject(REFCLSID clsid, REFIID iid, void** out) {
    *out = nullptr;
    for (const ServedClass& served : servedClasses()) {
        if (!IsEqualCLSID(clsid, served.clsid)) continue;
        const auto factory = com::ComPtr<Factory>::adopt(new Factory(served));
        return factory->QueryInterface(iid, out);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

bool mayUnload() {
    return locks == 0 && liveFaces() == 0;
}

} // namespace norvel::prova
