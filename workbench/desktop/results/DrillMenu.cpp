#include "workbench/desktop/results/DrillMenu.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/DrillOffers.h"

namespace quillara {
namespace {

/// What would be taken for an access key stays as it is written.
QString Plain(const std::string& text) {
    return QString::fromStdString(text).replace(u'&', QStringLiteral("&&"));
}

struct DrillMenuTexts {
    Q_DECLARE_TR_FUNCTIONS(DrillMenu)

  public:
    static QString TextOf(const DrillOffer& offer) {
        switch (offer.Kind) {
            case OfferKind::Down:
                return tr("Drill down on %1 = %2").arg(Plain(offer.Variable), Plain(offer.Category));
            case OfferKind::DownByList:
                return tr("Drill down on %1...").arg(Plain(offer.Variable));
            case OfferKind::Up:
                return tr("Drill up on %1").arg(Plain(offer.Variable));
        }
        return {};
    }

    /// Behind the text of an offer that can't be taken.
    static QString ReasonOf(OfferBar bar) {
        switch (bar) {
            case OfferBar::None:
                break;
            case OfferBar::Busy:
                return tr("a command still runs");
            case OfferBar::HasStep:
                return tr("it has a step already");
            case OfferBar::NoDrillVariable:
                return tr("it is no drill variable");
            case OfferBar::NoCases:
                return tr("it has no cases");
        }
        return {};
    }
};

}  // namespace

void AddDrillOffers(QMenu& menu, ExplorationModel& model, const std::vector<DrillOffer>& offers) {
    for (const DrillOffer& offer : offers) {
        const QString reason = DrillMenuTexts::ReasonOf(offer.BarredBy);
        const QString text = DrillMenuTexts::TextOf(offer);
        QAction* action = menu.addAction(reason.isEmpty() ? text : text + QStringLiteral(" (") + reason + u')');
        action->setEnabled(offer.CanBeTaken());
        QObject::connect(action, &QAction::triggered, &model, [&model, offer] {
            const auto take = [offer](Exploration& present) { TakeOffer(present, offer); };
            model.DoNext([&model, take] { model.Do(take); });
        });
    }
}

void AddDrillOffers(QMenu& menu, ExplorationModel& model, const ResultDocument& document, const DocumentPlace& place) {
    if (Exploration* exploration = model.Present()) {
        AddDrillOffers(menu, model, OffersAt(*exploration, document, place));
    }
}

}  // namespace quillara
