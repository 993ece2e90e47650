#pragma once

namespace vorn {
namespace templates {
namespace patterns {

// Scope guard over a lock object reached through T (a pointer). The concrete guard takes the lock in its
// constructor and marks it held; this destructor releases it then, through the object's unlock(), so
// that a lock is let go on every way out of a scope, exceptions included.
template <class T> class Guard
{
public:
    virtual ~Guard()
    {
        if (m_locked)
            m_object->unlock();
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    bool locked() const { return m_locked; }

protected:
    explicit Guard(T object) : m_object(object) {}

    T m_object;
    bool m_locked = false;
};

} // namespace patterns
} // namespace templates
} // namespace vorn
