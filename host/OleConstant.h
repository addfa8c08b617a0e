#pragma once

#include <string>
#include <utility>

/// A constant of a recorded script: a text of UTF-8.
class COleAConstant {
  public:
    explicit COleAConstant(std::string text) : Text(std::move(text)) {}

    [[nodiscard]] const std::string& Value() const { return Text; }

  private:
    std::string Text;
};
