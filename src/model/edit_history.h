#pragma once

#include "radio_image.h"

#include <cstddef>
#include <vector>

namespace zr310 {

// Undo and redo of the editors' changes to the radio image.
//
// Contract: the owner of the image calls record() after each user action
// with the image as it was before the action and as it is after; an action
// that changed no byte is not recorded. undo() and redo() return the image to
// put in place, or nothing when there is no step. A recorded action after
// some undos drops the steps that could have been redone. clear() starts a
// fresh history (after an open or a read). The history keeps whole images:
// 1024 bytes a step, at most kMaxSteps steps, the oldest dropped first.
class EditHistory {
public:
    static constexpr std::size_t kMaxSteps = 1000;

    // Returns false (and records nothing) when before == after.
    bool record(const RadioImage& before, const RadioImage& after);

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position < m_steps.size(); }

    // The image before the step being undone; the caller puts it in place.
    const RadioImage* undo();
    // The image after the step being redone.
    const RadioImage* redo();

    void clear();
    std::size_t size() const { return m_steps.size(); }

private:
    struct Step {
        RadioImage before, after;
    };
    std::vector<Step> m_steps;
    std::size_t m_position = 0; // steps [0, m_position) are done
};

} // namespace zr310
