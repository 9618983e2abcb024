// The smart COM pointers of compat/atlbase.h: exact reference counts after each step of
// their life, on an object that counts its references and answers one other interface.
#include <atlbase.h>
#include <objidl.h>

#include <gtest/gtest.h>

namespace {

// IUnknown and IPersist, one reference count.
class CountedObject : public IPersist {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void **out) override
    {
        if (!out)
            return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPersist)) {
            *out = static_cast<IPersist *>(this);
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++refs); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--refs); }
    STDMETHODIMP GetClassID(CLSID *id) override
    {
        *id = CLSID_NULL;
        return S_OK;
    }

    long refs = 0;
};

CComPtr<IPersist> handOut(CountedObject &object)
{
    return CComPtr<IPersist>(&object);
}

} // namespace

TEST(ComPtrTest, CopiesAddAReferenceAndMovesTakeIt)
{
    CountedObject object;
    {
        CComPtr<IPersist> first(&object);
        EXPECT_EQ(1, object.refs);
        CComPtr<IPersist> copy(first);
        EXPECT_EQ(2, object.refs);
        CComPtr<IPersist> moved(std::move(copy));
        EXPECT_EQ(2, object.refs);
        EXPECT_FALSE(copy);

        CComPtr<IPersist> assigned;
        assigned = handOut(object);
        EXPECT_EQ(3, object.refs);
        assigned = std::move(moved);
        EXPECT_EQ(2, object.refs);
        EXPECT_FALSE(moved);
        assigned = std::move(assigned);
        EXPECT_EQ(2, object.refs);
        EXPECT_TRUE(assigned);

        assigned.Release();
        EXPECT_EQ(1, object.refs);
        EXPECT_FALSE(assigned);
    }
    EXPECT_EQ(0, object.refs);
}

TEST(ComPtrTest, QueryPointersAskForTheirInterfaceOnly)
{
    CountedObject object;
    {
        CComQIPtr<IPersist> persist(static_cast<IUnknown *>(&object));
        EXPECT_EQ(1, object.refs);
        CComQIPtr<IStream> stream(static_cast<IUnknown *>(&object));
        EXPECT_FALSE(stream);
        EXPECT_EQ(1, object.refs);
        CComQIPtr<IUnknown> unknown(static_cast<IUnknown *>(&object));
        EXPECT_EQ(2, object.refs);
        unknown = static_cast<IUnknown *>(nullptr);
        EXPECT_EQ(1, object.refs);
    }
    EXPECT_EQ(0, object.refs);
}
