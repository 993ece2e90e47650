#include "family/genicam/FreshReads.h"

#include <arv.h>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

FreshReads::FreshReads(ArvGc* gc) : m_gc(gc), m_before(ARV_REGISTER_CACHE_POLICY_DISABLE)
{
    if (!m_gc)
        return;
    m_before = arv_gc_get_register_cache_policy(m_gc);
    arv_gc_set_register_cache_policy(m_gc, ARV_REGISTER_CACHE_POLICY_DISABLE);
}

FreshReads::~FreshReads()
{
    if (m_gc)
        arv_gc_set_register_cache_policy(m_gc, static_cast<ArvRegisterCachePolicy>(m_before));
}

void FreshReads::useCache(ArvGc* gc)
{
    // A register is cached unless its description says Cachable NoCache, and dropped from the cache
    // when a node among its pInvalidators changes: the rules GenICam gives descriptions, which vendors
    // write their files for. A register read with the cache off (FreshReads) refills it.
    arv_gc_set_register_cache_policy(gc, ARV_REGISTER_CACHE_POLICY_ENABLE);
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
