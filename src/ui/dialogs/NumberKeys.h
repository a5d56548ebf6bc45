// The key filter of the number fields on a line edit: each typed character
// goes through FilterKey with the field's flags (1 a point, 2 a minus); a
// comma becomes a point, a refused character is dropped. Editing and
// navigation keys pass untouched.
#pragma once

class QLineEdit;

namespace quarle::ui {

void FilterNumberKeys(QLineEdit* field, int flags);

} // namespace quarle::ui
