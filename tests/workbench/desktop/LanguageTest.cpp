// The desktop in another language.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTranslator>
#include <set>

#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/dialogs/ResourceTexts.h"
#include "workbench/desktop/results/DocumentView.h"
#include "workbench/desktop/window/Language.h"
#include "workbench/desktop/window/PreferencesDialog.h"
#include "workbench/desktop/window/RecentFiles.h"

namespace quillara {
namespace {

using testing::IsEmpty;

/// A language in which each text is the English one between signs of its own.
class Marked : public QTranslator {
  public:
    Marked() { QCoreApplication::installTranslator(this); }
    Marked(const Marked&) = delete;
    Marked& operator=(const Marked&) = delete;
    ~Marked() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] QString translate(const char*, const char* text, const char*, int) const override {
        return *text == '\0' ? QString() : u'«' + QString::fromUtf8(text) + u'»';
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

/// Texts for people that have gone past the translation.
class Untranslated {
  public:
    void LookAt(const QWidget& widget) {
        Add(widget.toolTip());
        Add(widget.accessibleName());
        for (const QAction* action : widget.actions()) {
            Add(action->text());
            Add(action->toolTip());
        }
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            Add(label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            Add(button->text());
        } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
            Add(group->title());
        } else if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
            Add(line->placeholderText());
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                Add(tabs->tabText(i));
            }
        } else if (qobject_cast<const QDockWidget*>(&widget) != nullptr) {
            Add(widget.windowTitle());
        }
    }
    /// Not what stands in results, which is the same in all languages.
    void LookIn(const QWidget& window) {
        LookAt(window);
        for (const QObject* child : window.children()) {
            if (const auto* widget = qobject_cast<const QWidget*>(child);
                widget != nullptr && qobject_cast<const DocumentView*>(child) == nullptr) {
                LookIn(*widget);
            }
        }
    }
    std::set<std::string> Texts;

  private:
    void Add(const QString& text) {
        static const QRegularExpression word(QStringLiteral("[A-Za-z]{2}"));
        if (text.contains(word) && !text.contains(u'«')) {
            Texts.insert(text.toStdString());
        }
    }
};

/// What data, the module and the core say is the same in all languages.
bool IsSaidByOthers(const std::string& text) {
    static const std::set<std::string> told{"Categorical variables",
                                            "Continuous variables",
                                            "2 chosen",
                                            "3 chosen",
                                            "Computing ...",
                                            "The file declares weight as its weight.",
                                            "age > 48 and region = \"Central Plain\"     not missing(income)",
                                            "age, income",
                                            "income, hours",
                                            "region",
                                            "region, sex, genre",
                                            "sex = Female  1077"};
    return told.contains(text) || text.find("survey.sav") != std::string::npos;
}

TEST(Language, EveryTextOfWindowsAndDialogsGoesThroughTheTranslation) {
    const Marked language;
    RecentFiles::Clear();
    ShownSurvey desktop;
    Untranslated found;
    for (const int button : {DrillVariablesButton, OrderButton, SelectCasesButton, WeightButton, OpenDataButton}) {
        desktop.InModal(button, [&](DialogView& view) { found.LookIn(*view.window()); });
    }
    desktop.Main.Model().Do([](Exploration& now) {
        now.Press(HistogramsButton);
        now.Press(FrequenciesButton);
        now.Down("sex", "Female");
    });
    found.LookIn(desktop.Main);
    PreferencesDialog preferences(nullptr);
    found.LookIn(preferences);
    std::erase_if(found.Texts, IsSaidByOthers);
    EXPECT_THAT(found.Texts, IsEmpty());
    EXPECT_EQ(desktop.Main.Dialog()->Find(UpButton)->property("text"), QStringLiteral("«&Up»"));
}

// Compiled from one text: &Up of the dialogs' resources is &Supren.
constexpr const char* Catalogue =
    "PLhkGMrvnJXNIRy/YKG93acAAAACZW9CAAAACAAAK8AAAAAAaQAAAD0DAAAADgAmAFMAdQBwAHIAZQBuCAAAAAAGAAAAAyZVcAcAAAAXcXVpbGxh"
    "cmE6OlJlc291cmNlVGV4dHMBiAAAAAIBAQ==";

TEST(Language, TheCatalogueOfTheUsersLanguageIsTaken) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("quillara_eo.qm")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromBase64(Catalogue));
    file.close();
    const QStringList folders{QStringLiteral("/nowhere"), folder.path()};
    EXPECT_FALSE(Language(folders).IsTranslated());
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Esperanto));
    {
        const Language language(folders);
        EXPECT_TRUE(language.IsTranslated());
        EXPECT_EQ(ResourceCaption("!373&Up").Text, "&Supren");
        EXPECT_EQ(ResourceCaption("!373&Up").Mark, "!373");
        EXPECT_EQ(ResourceText("Quick"), QStringLiteral("Quick")) << "what isn't translated stays";
    }
    QLocale::setDefault(before);
    EXPECT_EQ(ResourceText("&Up"), QStringLiteral("&Up"));
}

}  // namespace
}  // namespace quillara
