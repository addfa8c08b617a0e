#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/ExplorationHistory.h"
#include "workbench/exploration/ExplorationListener.h"
#include "workbench/exploration/KeptSession.h"

namespace quillara {

/// The exploration that a main window shows, if there is one, and what has happened to it as signals for its views.
/// Views work on it by Do, which shows the user what goes wrong.
class ExplorationModel : public QObject, public ExplorationListener {
    Q_OBJECT

  public:
    /// How the user answers; set once, by the main window.
    struct Answers {
        std::function<bool(Window&)> WorkIn;
        std::function<bool(BrushingRun&)> Pick;
        std::function<void(const QString&)> ShowMessage;
        /// Asks before something is lost: whether to do what the second text names. None: it is done.
        std::function<bool(const QString& question, const QString& action)> Confirm{};
    };

    /// `settings` outlives it; null: none are kept.
    explicit ExplorationModel(SettingsStore* settings, QObject* parent = nullptr);
    ~ExplorationModel() override;

    void SetAnswers(Answers answers) { Answering = std::move(answers); }

    /// Begins an exploration of a table in place of the one that is there. Throws as Exploration.
    void Begin(std::shared_ptr<const DataTable> table, ScriptOpening opening);
    /// Ends the exploration. Not while a command runs: false then.
    bool End();

    /// Null when there is none.
    [[nodiscard]] Exploration* Present() { return Explored.get(); }
    [[nodiscard]] ExplorationHistory& History() { return Past; }
    /// Whether a command runs or a modal window is open, so that no other command can begin.
    [[nodiscard]] bool IsBusy() const { return Explored != nullptr && Explored->IsBusy(); }

    /// Whether the user picks bars of a graph, within a command.
    [[nodiscard]] bool IsPicking() const { return Picks; }
    /// Does it at once, or, while bars are picked, as soon as the user has left that: the user is taken to want to.
    void DoNext(std::function<void()> work);

    /// Works on the exploration and shows the user what it throws. False when there is none or it has thrown.
    bool Do(const std::function<void(Exploration&)>& action);
    /// Does again what a session that was kept has done. Tables that one has made which the user has left aren't shown
    /// again.
    bool Restore(const KeptSession& session);
    /// Goes to a state of the history.
    bool GoTo(std::size_t state);
    /// Undoes the steps in force behind the first `count`.
    bool BackTo(std::size_t count);
    [[nodiscard]] bool Confirm(const QString& question, const QString& action) const {
        return !Answering.Confirm || Answering.Confirm(question, action);
    }

    bool WorkIn(Window& dialog) override;
    bool Pick(BrushingRun& run) override;
    void ShowMessage(std::string_view text) override;
    void DocumentAppeared(ResultDocument& document) override { emit documentAppeared(&document); }
    void DocumentChanged(ResultDocument& document) override { emit documentChanged(&document); }
    void DocumentCameToFront(ResultDocument& document) override { emit documentCameToFront(&document); }
    void DocumentWent(ResultDocument& document) override { emit documentWent(&document); }
    void DocumentsTold() override { emit documentsTold(); }
    void TableMade(std::shared_ptr<const DataTable> table) override;
    void RemarkMade(const Remark& remark) override { emit remarkMade(remark); }
    void Changed() override;
    void WorkBegan(std::string_view text, std::int32_t total) override;
    void WorkAdvanced(std::int32_t done) override { emit workAdvanced(done); }
    void WorkEnded() override { emit workEnded(); }

  signals:
    /// An exploration has begun, or the last one has ended.
    void replaced();
    /// Controls, steps or settings may be others.
    void changed();
    void documentAppeared(quillara::ResultDocument* document);
    void documentChanged(quillara::ResultDocument* document);
    void documentCameToFront(quillara::ResultDocument* document);
    void documentWent(quillara::ResultDocument* document);
    void documentsTold();
    void tableMade(std::shared_ptr<const quillara::DataTable> table);
    void remarkMade(const quillara::Remark& remark);
    /// Whoever lets the user pick bars is to end that.
    void leaveAsked();
    void workBegan(const QString& text, int total);
    void workAdvanced(int done);
    void workEnded();
    /// All that the user has asked for is done, or waits for an answer.
    void turnCame();

  private:
    bool Try(const std::function<void(Exploration&)>& action);
    void LeaveStartup();

    SettingsStore* Settings;
    Answers Answering;
    std::unique_ptr<Exploration> Explored;
    ExplorationHistory Past;
    std::function<void()> Next;  // to be done when picking has ended
    bool Picks = false;
    bool IsSettled = false;  // the tables that are made have been saved before, or nobody has wanted them
};

}  // namespace quillara
