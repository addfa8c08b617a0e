#pragma once

#include <QObject>
#include <QSettings>
#include <QVariant>
#include <map>
#include <memory>

namespace quillara {

/// What the user of the desktop prefers, and what the desktop remembers, kept in the user's configuration folder. The
/// application has one, which views ask and listen to.
class Preferences : public QObject {
    Q_OBJECT

  public:
    enum class Look { AsSystem, Light, Dark };
    enum class Decimals { AsSystem, Point, Comma };

    /// The one of the application; until it is opened it keeps things as long as the application lives.
    [[nodiscard]] static Preferences& Shared();
    /// Keeps things in a file from now on, and takes what it holds.
    void Open(const QString& file);

    [[nodiscard]] Look Theme() const;
    void SetTheme(Look look);
    [[nodiscard]] Decimals DecimalStyle() const;
    void SetDecimalStyle(Decimals decimals);
    /// Whether bars slide to their new heights.
    [[nodiscard]] bool HasMotion() const { return Value(QStringLiteral("motion"), true).toBool(); }
    void SetMotion(bool isOn) { Set(QStringLiteral("motion"), isOn); }
    /// Whether counts have bars behind them.
    [[nodiscard]] bool HasFrequencyBars() const { return Value(QStringLiteral("frequencyBars"), true).toBool(); }
    void SetFrequencyBars(bool isOn) { Set(QStringLiteral("frequencyBars"), isOn); }

    /// Something that is remembered under a name.
    [[nodiscard]] QVariant Value(const QString& name, const QVariant& otherwise = {}) const;
    void Remember(const QString& name, const QVariant& value);

  signals:
    /// A preference is another.
    void changed();

  private:
    void Set(const QString& name, const QVariant& value);

    std::unique_ptr<QSettings> File;
    std::map<QString, QVariant> Unkept;  // without a file
};

}  // namespace quillara
