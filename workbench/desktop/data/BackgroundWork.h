#pragma once

#include <QObject>
#include <functional>
#include <thread>

namespace quillara {

/// One piece of work beside the thread of the windows. A new one takes the place of the one that runs, which is
/// cancelled; so is one that runs when its owner ends.
class BackgroundWork : public QObject {
    Q_OBJECT

  public:
    /// What is done with the result, in the thread of the windows.
    using Delivery = std::function<void()>;
    /// The work: asks its argument now and then whether it is cancelled. Without memory it delivers nothing.
    using Task = std::function<Delivery(const std::function<bool()>& cancelled)>;

    using QObject::QObject;
    ~BackgroundWork() override;

    void Start(Task task);
    /// Nothing is delivered of what runs.
    void Cancel();
    [[nodiscard]] bool IsRunning() const { return Running; }

  signals:
    void began();
    /// It has been delivered or cancelled.
    void ended();

  private:
    void Deliver(int number, const Delivery& delivery);

    std::jthread Thread;
    int Number = 0;  // of what runs
    bool Running = false;
};

}  // namespace quillara
