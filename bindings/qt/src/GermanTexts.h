#pragma once

/// @file
/// The texts of Qt's own that a dialog shows, in German.

#include <QTranslator>

namespace nkdt::qt {

class GermanTexts : public QTranslator {
  public:
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int number) const override;
    bool isEmpty() const override { return false; }
};

}  // namespace nkdt::qt
