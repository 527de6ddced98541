#include "UndoManager.h"

#include "Exception.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

bool UndoManager::hasTarget(const Step& step)
{
    return std::any_of(step.begin(), step.end(), [](const Action& action) { return !action.target.expired(); });
}

UndoManager::UndoManager() = default;

UndoManager::~UndoManager() = default;

void UndoManager::registerUndoWithTarget(std::weak_ptr<const void> target, Operation operation)
{
    if (m_phase == Phase::Recording)
        m_redoSteps.clear();
    m_open.push_back({std::move(target), std::move(operation)});
    if (m_depth == 0)
        pushStep(std::exchange(m_open, {}));
}

void UndoManager::beginUndoGrouping()
{
    ++m_depth;
}

void UndoManager::endUndoGrouping()
{
    if (m_depth == 0)
        throw Exception("UndoGrouping", "A group was ended that was never begun");
    if (--m_depth == 0 && !m_open.empty())
        pushStep(std::exchange(m_open, {}));
}

bool UndoManager::canUndo() const
{
    return std::any_of(m_undoSteps.begin(), m_undoSteps.end(), hasTarget);
}

bool UndoManager::canRedo() const
{
    return std::any_of(m_redoSteps.begin(), m_redoSteps.end(), hasTarget);
}

void UndoManager::undo()
{
    perform(m_undoSteps, Phase::Undoing);
}

void UndoManager::redo()
{
    perform(m_redoSteps, Phase::Redoing);
}

void UndoManager::removeAllActions()
{
    m_undoSteps.clear();
    m_redoSteps.clear();
    m_open.clear();
}

void UndoManager::setLevelsOfUndo(std::size_t levels)
{
    m_levels = levels;
    trim();
}

void UndoManager::perform(std::vector<Step>& from, Phase phase)
{
    if (m_depth > 0)
        throw Exception("UndoGrouping", "Undo and redo need every group to be ended first");
    while (!from.empty() && !hasTarget(from.back()))
        from.pop_back();
    if (from.empty())
        return;
    Step step = std::move(from.back());
    from.pop_back();
    // However it ends, edits are recorded again afterwards.
    struct Restore {
        UndoManager& manager;
        ~Restore()
        {
            manager.m_depth = 0;
            manager.m_phase = Phase::Recording;
        }
    };
    m_phase = phase;
    m_depth = 1;
    const Restore restore{*this};
    const auto endGroup = [this] {
        m_depth = 1;
        endUndoGrouping();
    };
    try {
        std::for_each(step.rbegin(), step.rend(), [](const Action& action) {
            if (const auto target = action.target.lock())
                action.operation();
        });
    } catch (...) {
        // What was undone so far can be redone.
        endGroup();
        throw;
    }
    endGroup();
}

void UndoManager::pushStep(Step step)
{
    (m_phase == Phase::Undoing ? m_redoSteps : m_undoSteps).push_back(std::move(step));
    trim();
}

void UndoManager::trim()
{
    if (m_levels == 0)
        return;
    for (auto* steps : {&m_undoSteps, &m_redoSteps}) {
        if (steps->size() > m_levels)
            steps->erase(steps->begin(), steps->end() - static_cast<std::ptrdiff_t>(m_levels));
    }
}

} // namespace TOLVGraphing
