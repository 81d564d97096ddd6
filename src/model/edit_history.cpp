#include "edit_history.h"

namespace zr310 {

bool EditHistory::record(const RadioImage& before, const RadioImage& after) {
    if (before == after)
        return false;
    m_steps.resize(m_position); // a new action ends the redo steps
    m_steps.push_back({before, after});
    if (m_steps.size() > kMaxSteps)
        m_steps.erase(m_steps.begin());
    m_position = m_steps.size();
    return true;
}

const RadioImage* EditHistory::undo() {
    if (!canUndo())
        return nullptr;
    --m_position;
    return &m_steps[m_position].before;
}

const RadioImage* EditHistory::redo() {
    if (!canRedo())
        return nullptr;
    return &m_steps[m_position++].after;
}

void EditHistory::clear() {
    m_steps.clear();
    m_position = 0;
}

} // namespace zr310
