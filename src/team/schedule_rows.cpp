#include "team/schedule_rows.h"

#include "core/run_time_error.h"

#include <cmath>

double toNumber(const QString& text) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number)) throw RunTimeError(RunTimeError::TypeMismatch);
    return number;
}
