#include "workbench/desktop/data/BackgroundWork.h"

#include <new>
#include <utility>

namespace quillara {

BackgroundWork::~BackgroundWork() {
    Thread.request_stop();
    if (Thread.joinable()) {
        Thread.join();
    }
}

void BackgroundWork::Start(Task task) {
    Thread.request_stop();
    const int number = ++Number;
    Running = true;
    emit began();
    Thread = std::jthread([this, number, task = std::move(task)](const std::stop_token& stop) {
        Delivery delivery;
        try {
            delivery = task([&] { return stop.stop_requested(); });
        } catch (const std::bad_alloc&) {
            delivery = {};
        }
        QMetaObject::invokeMethod(
            this, [this, number, delivery] { Deliver(number, delivery); }, Qt::QueuedConnection);
    });
}

void BackgroundWork::Cancel() {
    if (Running) {
        Thread.request_stop();
        ++Number;
        Running = false;
        emit ended();
    }
}

void BackgroundWork::Deliver(int number, const Delivery& delivery) {
    if (number != Number) {
        return;  // another has taken its place
    }
    Running = false;
    if (delivery) {
        delivery();
    }
    emit ended();
}

}  // namespace quillara
