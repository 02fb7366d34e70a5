// The Japanese wording of what Qt's own widgets say: buttons of boxes, file dialogs, menus of text boxes.
#pragma once

#include <QTranslator>

namespace relvane::qt {

class JapaneseTexts : public QTranslator {
    Q_OBJECT

public:
    using QTranslator::QTranslator;
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }
};

} // namespace relvane::qt
