#pragma once

#include <atomic>

namespace vorn {
namespace family {

// The use count behind a family library's init/deinit pair. A deinit without a matching init is
// ignored rather than wrapping, so an unbalanced host cannot tear a library down under another one.
class UseCount
{
public:
    void init()
    {
        m_inits.fetch_add(1);
        m_count.fetch_add(1);
    }

    void deinit()
    {
        m_deinits.fetch_add(1);
        unsigned current = m_count.load();
        while (current > 0 && !m_count.compare_exchange_weak(current, current - 1)) {
        }
    }

    unsigned count() const { return m_count.load(); }
    unsigned long long inits() const { return m_inits.load(); }
    unsigned long long deinits() const { return m_deinits.load(); }

private:
    std::atomic<unsigned> m_count{0};
    std::atomic<unsigned long long> m_inits{0};
    std::atomic<unsigned long long> m_deinits{0};
};

} // namespace family
} // namespace vorn
