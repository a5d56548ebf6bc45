// Where language files are read and written: the one place that decides it.
//
// Language files stand in the program's folder. Where that folder cannot be
// written (an installed copy in a system folder), files the user makes or
// edits go to the user's data folder instead; a file of the same name there
// wins over the program's, and is the one written from then on. Further
// places (an installed data folder) join the list of Places, in order of
// precedence.
#pragma once

#include "platform/Services.h"

#include <QString>
#include <QStringList>

namespace quarle::platform {

// The folders that may hold language files, the one that wins first.
QStringList LanguagePlaces(Services& services);

// The path of a language file to read: the first place that holds it, or
// the program's folder when none does.
QString LanguageReadPath(Services& services, const QString& fileName);

// The folder fileName is written to, so that it is read from there from
// then on: where it is read from now, or a place ahead of that one; for a
// file no place holds, the program's folder if it can be written, else the
// user's data folder (made when missing). Empty when none of these can be
// written.
QString LanguageWriteFolder(Services& services, const QString& fileName);

// The names (with extension) of every ".lng" file of all places, each name
// once, sorted without regard to case.
QStringList LanguageFileNames(Services& services);

} // namespace quarle::platform
