#include "NumberBox.h"

#include <limits>

using namespace Qt::StringLiterals;

NumberBox::NumberBox(bool percentage, QWidget *parent)
    : QDoubleSpinBox(parent)
    , m_scale(percentage ? 100 : 1)
{
    setDecimals(percentage ? 4 : 6); // the sixth of the fraction in either case
    setRange(std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
    setStepType(AdaptiveDecimalStepType); // the step suits 0.002 as well as 2000
    if (percentage)
        setSuffix(u" %"_s);
}

double NumberBox::number() const
{
    return value() / m_scale;
}

void NumberBox::setNumber(double number)
{
    setValue(number * m_scale);
}

QString NumberBox::textFromValue(double value) const
{
    QLocale plain = locale();
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    return plain.toString(value, 'f', QLocale::FloatingPointShortest);
}
