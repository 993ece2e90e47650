#pragma once

typedef struct _ArvGc ArvGc;

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// While it lives, every register the GenICam library reads through the document comes from the
// device, not from the document's register cache; each register read so also replaces what the
// cache held. The cache is right for values that change only through this document's writes and
// the invalidators the description names; polling, a refresh the user asks for and a device that
// answers again after a loss are about what may have changed behind the document's back.
class FreshReads
{
public:
    explicit FreshReads(ArvGc* gc);
    ~FreshReads();
    FreshReads(const FreshReads&) = delete;
    FreshReads& operator=(const FreshReads&) = delete;

    // The policy every document of this backend reads with outside a FreshReads.
    static void useCache(ArvGc* gc);

private:
    ArvGc* m_gc;
    int m_before;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
