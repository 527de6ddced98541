#pragma once

#include <TOLVMath/Export.h>

#include <functional>
#include <memory>
#include <vector>

namespace TOLVGraphing {

/// Records how to take edits back. Each registration outside an explicit group is one step of its own; a group is one step, however much it holds.
/// While a step is undone, the registrations that arrive become the redo step, and the other way round. A fresh registration clears what could be redone.
/// What an operation captures is kept alive; its target is not: the operations of a target that is gone are passed over, and a step that has no other is none. Used from one thread.
class TOLV_EXPORT UndoManager {
public:
    /// Called with the target when the step is undone.
    using Operation = std::function<void()>;

    /// Nothing to undo.
    UndoManager();
    ~UndoManager();
    UndoManager(const UndoManager&) = delete;
    UndoManager& operator=(const UndoManager&) = delete;

    /// Records the inverse of an edit that is about to happen. `operation` (copied, not empty) must not keep the target alive. A target that is null or gone leaves a step that does nothing.
    void registerUndoWithTarget(std::weak_ptr<const void> target, Operation operation);

    /// Collect the registrations up to the matching end as one step. Groups nest; an empty group leaves no step.
    void beginUndoGrouping();
    /// Throws Exception "UndoGrouping" when no group is open.
    void endUndoGrouping();

    /// True when there is a step to take back, or to do again. What an open group collects is none yet.
    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    /// Takes the last step back, all of its operations in reverse order. Does nothing when there is none. What an operation throws passes through; what was undone until then can be redone. Throws Exception "UndoGrouping" while a group is open.
    void undo();
    /// Does the last undone step again, otherwise as `undo`.
    void redo();
    /// True while a step is taken back, or done again.
    [[nodiscard]] bool isUndoing() const { return m_phase == Phase::Undoing; }
    [[nodiscard]] bool isRedoing() const { return m_phase == Phase::Redoing; }
    /// Forgets all steps, also those collected in open groups.
    void removeAllActions();
    /// The most steps kept, of those to undo and of those to redo each; 0, the default, keeps all. The oldest go first.
    void setLevelsOfUndo(std::size_t levels);

private:
    enum class Phase : unsigned char { Recording, Undoing, Redoing };
    struct Action {
        std::weak_ptr<const void> target;
        Operation operation;
    };
    using Step = std::vector<Action>;

    static bool hasTarget(const Step& step);
    void perform(std::vector<Step>& from, Phase phase);
    void pushStep(Step step);
    void trim();

    std::vector<Step> m_undoSteps;
    std::vector<Step> m_redoSteps;
    Step m_open;
    int m_depth = 0;
    std::size_t m_levels = 0;
    Phase m_phase = Phase::Recording;
};

} // namespace TOLVGraphing
