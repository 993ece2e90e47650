#pragma once

#include <QVariant>

namespace vorn {
namespace core {
namespace rows {

// What the value column of a styled integer row showed last, for its details tool tip. Each display
// of the value notes the value; the tool tip is made when it is asked for, and made again only once
// the value shown has changed. A view displays values on every repaint, but asks for a tool tip only
// when the pointer rests on a row.
template <class T> class IntegerDetails
{
public:
    void displayed(T value, bool isField, int fieldIndex)
    {
        if (m_state != State::None && value == m_value && isField == m_isField && fieldIndex == m_fieldIndex)
            return;
        m_value = value;
        m_isField = isField;
        m_fieldIndex = fieldIndex;
        m_state = State::Noted;
    }

    // Empty until a value was displayed; make(value, isField, fieldIndex) makes the text.
    template <class Make> QVariant toolTip(Make make)
    {
        if (m_state == State::Noted) {
            m_text = make(m_value, m_isField, m_fieldIndex);
            m_state = State::Made;
        }
        return m_text;
    }

private:
    enum class State : unsigned char { None, Noted, Made };
    QVariant m_text;
    T m_value = 0;
    int m_fieldIndex = 0;
    bool m_isField = false;
    State m_state = State::None;
};

} // namespace rows
} // namespace core
} // namespace vorn
