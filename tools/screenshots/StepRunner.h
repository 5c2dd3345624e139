#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QElapsedTimer>

namespace screenshots {

/// Runs steps one after another, each as soon as the windows are ready for it. A step may open a modal
/// window; the next ones then run inside that window's event loop. Main thread.
class StepRunner
{
  public:
    /// Adds a step, which is tried again and again until it returns true. The name is for the message when
    /// that never happens.
    void Then(std::string name, std::function<bool()> step);
    /// Sets a function that is called again and again when all steps are done.
    void Afterwards(std::function<void()> act) { afterwards = std::move(act); }
    /// Begins with the next event loop that runs.
    void Begin();
    bool IsDone() const { return next == steps.size(); }

  private:
    struct Step
    {
        std::string name;
        std::function<bool()> act;
    };

    void Schedule();
    void TryNextStep();

    std::vector<Step> steps;
    std::function<void()> afterwards;
    std::size_t next = 0;
    QElapsedTimer waiting;
};

} // namespace screenshots
