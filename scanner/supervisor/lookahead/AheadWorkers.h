#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

namespace zetaudiofilterscan {

/// Knows what each worker is doing, what it has loaded, and in whose company. The first ones are regular; the
/// extra ones behind them serve second tries only. It starts nothing and reads no clock.
class AheadWorkers
{
  public:
    using Time = std::chrono::steady_clock::time_point;
    using Entity = std::size_t;
    using Worker = std::size_t;

    struct State
    {
        /// It is there, or will be when it is told to start.
        bool exists = false;
        std::optional<Entity> entity;
        Time begun{};
        std::vector<Entity> loaded;
        /// Other workers were at these meanwhile, or had loaded them.
        std::vector<Entity> company;
        bool inCompany = false;
        /// It is at a suspect, and nobody else is at work.
        bool alone = false;
        /// Its process must go before it begins with anything else.
        bool mustEnd = false;

        /// It has nothing to do and holds something.
        bool IsIdle() const { return exists && !entity && !mustEnd && !loaded.empty(); }
    };

    AheadWorkers(std::size_t regularOnes, std::size_t extraOnes);

    State& operator[](Worker worker) { return states[worker]; }
    const State& operator[](Worker worker) const { return states[worker]; }
    auto begin() { return states.begin(); }
    auto end() { return states.end(); }
    auto begin() const { return states.begin(); }
    auto end() const { return states.end(); }
    std::size_t Count() const noexcept { return states.size(); }
    bool IsRegular(Worker worker) const noexcept { return worker < regular; }

    /// The worker is at the entity from now on. Everybody's company is noted.
    void Seat(Worker worker, Entity entity, bool alone, Time now);

    std::optional<Worker> FreeRegular() const;
    std::optional<Worker> FreeExtra() const;
    std::optional<Entity> EntityOfSecondTry() const;
    /// The plug-in that has been on trial for longest.
    std::optional<Entity> LongestOnTrial() const;
    bool IsAnyIdle() const;
    bool IsAnyAlone() const;
    /// A worker whose process must go, or one that has anything loaded. It is as new afterwards.
    std::optional<Worker> TakeWhoMustEnd();
    std::optional<Worker> TakeWhoHasLoaded();

  private:
    std::optional<Worker> Renew(std::vector<State>::iterator found);

    const std::size_t regular;
    std::vector<State> states;
};

} // namespace zetaudiofilterscan
