#include "desktop/search/command.h"

#include <QtGui/QKeySequence>

namespace tessary {

QString Command::keyText() const {
    if (keys_.isEmpty()) return {};
    return QKeySequence(keys_.front()).toString(QKeySequence::NativeText).replace('+', ' ');
}

}  // namespace tessary
