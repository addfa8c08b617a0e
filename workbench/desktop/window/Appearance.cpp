#include "workbench/desktop/window/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QLocale>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>
#include <array>
#include <memory>

#include "workbench/desktop/window/OutlinedStyle.h"
#include "workbench/desktop/window/Preferences.h"

namespace quillara {
namespace {

// Where desktops tell programs which colours their user prefers.
constexpr const char* Service = "org.freedesktop.portal.Desktop";
constexpr const char* Place = "/org/freedesktop/portal/desktop";
constexpr const char* Interface = "org.freedesktop.portal.Settings";
constexpr const char* Group = "org.freedesktop.appearance";
constexpr const char* Setting = "color-scheme";
constexpr unsigned PrefersDark = 1;
constexpr int Dark = 128;  // a colour darker than the middle

struct ColourRow {
    QPalette::ColorRole Role;
    QRgb Usual;
    QRgb Disabled;
};

// clang-format off
constexpr auto DarkRows = std::to_array<ColourRow>({
    {QPalette::Window,          0xff2b2d30, 0xff2b2d30},
    {QPalette::WindowText,      0xffe3e5e8, 0xffa3a8b0},
    {QPalette::Base,            0xff1e1f22, 0xff26282b},
    {QPalette::AlternateBase,   0xff33363b, 0xff2b2d30},
    {QPalette::Text,            0xffe3e5e8, 0xffa3a8b0},
    {QPalette::PlaceholderText, 0xff9a9fa8, 0xff8d929a},
    {QPalette::Button,          0xff3a3d42, 0xff303236},
    {QPalette::ButtonText,      0xffe3e5e8, 0xffa3a8b0},
    {QPalette::BrightText,      0xffffffff, 0xffffffff},
    {QPalette::ToolTipBase,     0xff3a3d42, 0xff3a3d42},
    {QPalette::ToolTipText,     0xffe3e5e8, 0xffe3e5e8},
    {QPalette::Highlight,       0xff2f6fb5, 0xff4a4e55},
    {QPalette::HighlightedText, 0xffffffff, 0xffc5c8cd},
    {QPalette::Link,            0xff7ab4f5, 0xffa3a8b0},
    {QPalette::LinkVisited,     0xffb79bea, 0xffa3a8b0},
    {QPalette::Light,           0xff4d5157, 0xff4d5157},
    {QPalette::Midlight,        0xff43464c, 0xff43464c},
    {QPalette::Mid,             0xff55595f, 0xff55595f},
    {QPalette::Dark,            0xff1a1b1d, 0xff1a1b1d},
    {QPalette::Shadow,          0xff101113, 0xff101113},
});
// clang-format on

bool IsDark(const QPalette& colours) {
    return colours.color(QPalette::Window).lightness() < Dark;
}

QPalette LightColours() {
    const std::unique_ptr<QStyle> style(QStyleFactory::create(QStringLiteral("Fusion")));
    return style == nullptr ? QPalette() : style->standardPalette();
}

QLocale LocaleOf(Preferences::Decimals decimals) {
    switch (decimals) {
        case Preferences::Decimals::Point:
            return {QLocale::English, QLocale::UnitedStates};
        case Preferences::Decimals::Comma:
            return {QLocale::German, QLocale::Germany};
        default:
            return QLocale::system();
    }
}

/// Nothing stands between thousands, as in all tables, charts and remarks.
QLocale NumbersAs(Preferences::Decimals decimals) {
    QLocale numbers = LocaleOf(decimals);
    numbers.setNumberOptions(numbers.numberOptions() | QLocale::OmitGroupSeparator);
    return numbers;
}

}  // namespace

Appearance::Appearance(QObject* parent) : QObject(parent) {
    QApplication::setStyle(new OutlinedStyle);
    OfPlatform = QApplication::palette();
    connect(&Preferences::Shared(), &Preferences::changed, this, &Appearance::Apply);
    FollowSystem();
    Apply();
}

QPalette Appearance::DarkColours() {
    QPalette colours;
    for (const ColourRow& row : DarkRows) {
        colours.setColor(row.Role, QColor::fromRgb(row.Usual));
        colours.setColor(QPalette::Disabled, row.Role, QColor::fromRgb(row.Disabled));
    }
    return colours;
}

void Appearance::FollowSystem() {
    QDBusConnection::sessionBus().connect(QString::fromLatin1(Service), QString::fromLatin1(Place),
                                          QString::fromLatin1(Interface), QStringLiteral("SettingChanged"), this,
                                          SLOT(HearSetting(QString, QString, QDBusVariant)));
    // Some desktops don't tell it; whoever has changed the setting comes back to this program.
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            AskSystem();
        }
    });
    AskSystem();
}

/// The answer comes later: the first window doesn't wait for it.
void Appearance::AskSystem() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(QString::fromLatin1(Service), QString::fromLatin1(Place),
                                                           QString::fromLatin1(Interface), QStringLiteral("Read"));
    question << QString::fromLatin1(Group) << QString::fromLatin1(Setting);
    auto* waiting = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [this, waiting] {
        const QDBusPendingReply<QDBusVariant> answer = *waiting;
        waiting->deleteLater();
        if (answer.isValid()) {
            TakeScheme(answer.value().variant());
        }
    });
}

void Appearance::HearSetting(const QString& group, const QString& name, const QDBusVariant& value) {
    if (group == QString::fromLatin1(Group) && name == QString::fromLatin1(Setting)) {
        TakeScheme(value.variant());
    }
}

/// Some wrap the value twice.
void Appearance::TakeScheme(const QVariant& scheme) {
    const QVariant inner = scheme.canConvert<QDBusVariant>() ? scheme.value<QDBusVariant>().variant() : scheme;
    IsSystemDark = inner.toUInt() == PrefersDark;
    Apply();
}

void Appearance::Apply() {
    const Preferences& shared = Preferences::Shared();
    const Preferences::Look look = shared.Theme();
    const bool isDark = look == Preferences::Look::Dark ||
                        (look == Preferences::Look::AsSystem && (IsSystemDark || IsDark(OfPlatform)));
    QPalette colours = OfPlatform;
    if (isDark != IsDark(OfPlatform)) {
        colours = isDark ? DarkColours() : LightColours();
    }
    if (colours != QApplication::palette()) {
        QApplication::setPalette(colours);
    }
    const QLocale numbers = NumbersAs(shared.DecimalStyle());
    if (numbers != QLocale()) {
        QLocale::setDefault(numbers);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            window->setLocale(numbers);
        }
    }
}

}  // namespace quillara
