#include "TOLVMarker.h"

namespace TOLVGraphing {

namespace {

const ArchiveClassRegistration registration("TOLVMarker", &TOLVMarker::initWithCoder);

} // namespace

std::shared_ptr<TOLVMarker> TOLVMarker::markerWithValue(double value)
{
    return std::make_shared<TOLVMarker>(value);
}

std::shared_ptr<TOLVMarker> TOLVMarker::copy() const
{
    return std::make_shared<TOLVMarker>(*this);
}

void TOLVMarker::encodeWithCoder(KeyedArchiver& coder) const
{
    coder.encodeDouble(m_value, "value");
    coder.encodeInteger(m_axisIndex, "axisIndex");
}

std::shared_ptr<TOLVMarker> TOLVMarker::initWithCoder(KeyedUnarchiver& coder)
{
    const auto value = coder.decodeDouble("value");
    if (!value)
        return nullptr;
    auto marker = markerWithValue(*value);
    marker->setAxisIndex(coder.decodeInteger("axisIndex").value_or(0));
    return marker;
}

} // namespace TOLVGraphing
