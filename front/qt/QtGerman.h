#pragma once

class QCoreApplication;

namespace zd::qt {

// Makes Qt speak German in its own texts, whatever the system's language:
// shortcuts read "Strg+E", a text box's context menu offers "Kopieren".
// Loads Qt's German translation, as installed with Qt, into `app`; false
// when it is not there, and Qt then stays with its English.
bool speakGerman(QCoreApplication& app);

}  // namespace zd::qt
