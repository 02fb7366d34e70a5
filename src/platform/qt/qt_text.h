// Texts on their way between the program and Qt.
#pragma once

#include <QString>

#include "platform/text.h"

namespace relvane::qt {

QString toQString(TextView text);
Text fromQString(const QString& text);

// Paths: the program's Text against the names that Qt's file classes take.
QString toQtPath(const Text& path);
Text fromQtPath(const QString& path);

// As a person is to read it: CR and CR LF, the line breaks of the program, become Qt's LF.
QString withLineBreaks(TextView text);

// For a widget that takes "&" for the mark of an access key: names of objects may hold one.
QString asCaption(TextView text);

// A tool tip that shows the text as it stands, however much it looks like HTML.
QString asToolTip(const QString& text);

} // namespace relvane::qt
