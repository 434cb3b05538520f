#include "platform/theme.h"

#include <QApplication>

void applyTheme(QApplication& app) { app.setStyle(QStringLiteral("Fusion")); }

QIcon themedIcon(const QString& name) { return QIcon(QStringLiteral(":/icons/%1.svg").arg(name)); }
