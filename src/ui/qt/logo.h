// The program's mark: a small month sheet with coloured days, painted by code at any size.
#pragma once

#include <QIcon>
#include <QPainter>

namespace kalvora {

void zeichne_Logo(QPainter& maler, const QRectF& platz);
QIcon Programmsymbol();

} // namespace kalvora
