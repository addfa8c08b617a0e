#include "workbench/desktop/window/Preferences.h"

namespace quillara {
namespace {

const QString ThemeName = QStringLiteral("theme");
const QString DecimalsName = QStringLiteral("decimals");

/// A number that stands for one of `count` choices; the first for any other.
int ChoiceOf(const QVariant& value, int count) {
    const int number = value.toInt();
    return number >= 0 && number < count ? number : 0;
}

}  // namespace

Preferences& Preferences::Shared() {
    static Preferences shared;
    return shared;
}

void Preferences::Open(const QString& file) {
    File = std::make_unique<QSettings>(file, QSettings::IniFormat);
    emit changed();
}

Preferences::Look Preferences::Theme() const {
    return static_cast<Look>(ChoiceOf(Value(ThemeName), 3));
}

void Preferences::SetTheme(Look look) {
    Set(ThemeName, static_cast<int>(look));
}

Preferences::Decimals Preferences::DecimalStyle() const {
    return static_cast<Decimals>(ChoiceOf(Value(DecimalsName), 3));
}

void Preferences::SetDecimalStyle(Decimals decimals) {
    Set(DecimalsName, static_cast<int>(decimals));
}

QVariant Preferences::Value(const QString& name, const QVariant& otherwise) const {
    if (File != nullptr) {
        return File->value(name, otherwise);
    }
    const auto found = Unkept.find(name);
    return found == Unkept.end() ? otherwise : found->second;
}

void Preferences::Remember(const QString& name, const QVariant& value) {
    if (File != nullptr) {
        File->setValue(name, value);
    } else {
        Unkept[name] = value;
    }
}

void Preferences::Set(const QString& name, const QVariant& value) {
    if (Value(name) != value) {
        Remember(name, value);
        emit changed();
    }
}

}  // namespace quillara
