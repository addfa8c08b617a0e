#pragma once

#include <cstddef>
#include <functional>

#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// One of many tasks, done by the given worker; both are numbered from 0.
using NumberedTask = std::function<void(std::size_t task, std::size_t worker)>;

/// Does many tasks on several threads. The calling thread is worker 0, and the only one that talks to the monitor.
class WorkCrew {
  public:
    /// As many workers as `threads`; 0: as many as the processor runs at once.
    WorkCrew(std::size_t threads, WorkMonitor& monitor);

    /// How many workers there may be, at least 1.
    [[nodiscard]] std::size_t Workers() const { return MostWorkers; }

    /// Does the tasks 0, 1, ..., each once, taken up in this order; each is `units` for the monitor. Where no threads
    /// are to be had, fewer workers do them. An exception, be it of a task or of the monitor, ends the work: the tasks
    /// that have begun are waited for, and it is thrown.
    void Do(std::size_t tasks, std::size_t units, const NumberedTask& task) const;

  private:
    std::size_t MostWorkers;
    WorkMonitor& Monitor;
};

}  // namespace quillara
