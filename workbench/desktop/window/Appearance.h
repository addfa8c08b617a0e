#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>

namespace quillara {

/// Gives the application the colours and the numbers that its user prefers, and follows the system where the user
/// prefers that.
class Appearance : public QObject {
    Q_OBJECT

  public:
    explicit Appearance(QObject* parent = nullptr);

    /// The colours of dark windows.
    [[nodiscard]] static QPalette DarkColours();

  private slots:
    /// The desktop of the system says that one of its settings is another.
    void HearSetting(const QString& group, const QString& name, const QDBusVariant& value);

  private:
    void FollowSystem();
    void AskSystem();
    void TakeScheme(const QVariant& scheme);
    void Apply();

    QPalette OfPlatform;
    bool IsSystemDark = false;
};

}  // namespace quillara
