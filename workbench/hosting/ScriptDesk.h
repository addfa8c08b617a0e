#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace quillara {

class Window;
struct BrushingRun;

/// What a person would have been told.
struct DeskMessage {
    std::string Text;
    std::string RemarkCode;  ///< of a remark of the host; empty: a message of the analysis
};

/// What scripts give and get besides the members of objects: their answers to modal dialogs, one after the other, and
/// the messages that a person would have seen. One for all analyses of the application.
class ScriptDesk {
  public:
    /// Works in an open modal window. One that is still open then asks the next answer.
    using Work = std::function<void(Window&)>;
    /// Picks a bar of a brushing graph; false: leaves.
    using Pick = std::function<bool(BrushingRun&)>;
    using Answer = std::variant<Work, Pick>;

    void Expect(Answer answer) { Answers.push_back(std::move(answer)); }
    /// Lets the next answer work in a window; false when there is none. Throws UsageError when it is a pick.
    bool WorkIn(Window& window);
    /// Lets the next answer pick a bar; false when it leaves, when it is for a window, and when there is none.
    bool PickIn(BrushingRun& run);
    /// Forgets the answers that no window has asked for.
    void ForgetAnswers() { Answers.clear(); }
    [[nodiscard]] std::size_t AnswersLeft() const { return Answers.size(); }

    /// Keeps a message; of very many the last ones.
    void Keep(std::string_view message) { Keep(DeskMessage{std::string(message), {}}); }
    void Keep(DeskMessage message);
    /// The messages since they were last forgotten, the newest last.
    [[nodiscard]] const std::deque<DeskMessage>& Messages() const { return Kept; }
    void ForgetMessages() { Kept.clear(); }
    /// How many messages have come so far, those that are forgotten included; may be asked on any
    /// thread.
    [[nodiscard]] std::size_t MessagesSoFar() const { return Counted; }

  private:
    std::deque<Answer> Answers;
    std::deque<DeskMessage> Kept;
    std::atomic<std::size_t> Counted = 0;
};

[[nodiscard]] ScriptDesk& TheScriptDesk();

}  // namespace quillara
