#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace quillara {

class Window;

/// What scripts give and get besides the members of objects: their answers to modal dialogs, one after the other, and
/// the messages that a person would have seen. One for all analyses of the application.
class ScriptDesk {
  public:
    /// Works in an open modal window. One that is still open then asks the next answer.
    using Answer = std::function<void(Window&)>;

    void Expect(Answer answer) { Answers.push_back(std::move(answer)); }
    /// Lets the next answer work in a window; false when there is none.
    bool WorkIn(Window& window);
    /// Forgets the answers that no window has asked for.
    void ForgetAnswers() { Answers.clear(); }
    [[nodiscard]] std::size_t AnswersLeft() const { return Answers.size(); }

    /// Keeps a message; of very many the last ones.
    void Keep(std::string_view message);
    /// The messages since they were last forgotten, the newest last.
    [[nodiscard]] const std::deque<std::string>& Messages() const { return Kept; }
    void ForgetMessages() { Kept.clear(); }
    /// How many messages have come so far, those that are forgotten included; may be asked on any
    /// thread.
    [[nodiscard]] std::size_t MessagesSoFar() const { return Counted; }

  private:
    std::deque<Answer> Answers;
    std::deque<std::string> Kept;
    std::atomic<std::size_t> Counted = 0;
};

[[nodiscard]] ScriptDesk& TheScriptDesk();

}  // namespace quillara
