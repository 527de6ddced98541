#include "TOLVAxisExtents.h"

#include "../platform/text/NumberText.h"

namespace TOLVGraphing {

namespace {

const ArchiveClassRegistration registration("TOLVAxisExtents", &TOLVAxisExtents::initWithCoder);

} // namespace

std::shared_ptr<TOLVAxisExtents> TOLVAxisExtents::extentsWithMin(double min, double max)
{
    auto extents = std::make_shared<TOLVAxisExtents>();
    extents->setMin(min);
    extents->setMax(max);
    return extents;
}

std::shared_ptr<TOLVAxisExtents> TOLVAxisExtents::copy() const
{
    return extentsWithMin(m_min, m_max);
}

void TOLVAxisExtents::encodeWithCoder(KeyedArchiver& coder) const
{
    coder.encodeDouble(m_min, "min");
    coder.encodeDouble(m_max, "max");
}

std::shared_ptr<TOLVAxisExtents> TOLVAxisExtents::initWithCoder(KeyedUnarchiver& coder)
{
    return extentsWithMin(coder.decodeDouble("min").value_or(0.0), coder.decodeDouble("max").value_or(0.0));
}

std::string toString(const TOLVAxisExtents& extents)
{
    return "[" + shortestText(extents.min()) + ", " + shortestText(extents.max()) + "]";
}

} // namespace TOLVGraphing
