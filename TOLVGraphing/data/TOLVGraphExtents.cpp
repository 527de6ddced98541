#include "TOLVGraphExtents.h"

#include "../graph/TOLVGraph.h"

#include <utility>

namespace TOLVGraphing {

namespace {

const ArchiveClassRegistration registration("TOLVGraphExtents", &TOLVGraphExtents::initWithCoder);

} // namespace

TOLVGraphExtents::TOLVGraphExtents()
{
    for (Member* member : {&m_x, &m_y, &m_z})
        install(*member, std::make_shared<TOLVAxisExtents>());
}

TOLVGraphExtents::~TOLVGraphExtents()
{
    // Somebody else may still hold a range; it must not call back into this object.
    for (Member* member : {&m_x, &m_y, &m_z})
        stopObserving(*member);
}

void TOLVGraphExtents::stopObserving(Member& member)
{
    if (!member.extents)
        return;
    member.extents->removeObserver(member.minToken);
    member.extents->removeObserver(member.maxToken);
}

void TOLVGraphExtents::install(Member& member, const std::shared_ptr<const TOLVAxisExtents>& extents)
{
    // Observed before it takes the place of the former one, so that a member without its observers never comes about.
    Member observed{member.key, extents ? extents->copy() : nullptr};
    if (observed.extents) {
        const auto announceMember = [this, key = member.key](const PropertyChange&) {
            willChangeValueForKey(key);
            didChangeValueForKey(key);
        };
        observed.minToken = observed.extents->addObserver("min", announceMember);
        observed.maxToken = observed.extents->addObserver("max", announceMember);
    }
    willChangeValueForKey(member.key);
    stopObserving(member);
    member = std::move(observed);
    didChangeValueForKey(member.key);
}

std::shared_ptr<TOLVGraphExtents> TOLVGraphExtents::copy() const
{
    auto result = std::make_shared<TOLVGraphExtents>();
    result->setX(m_x.extents);
    result->setY(m_y.extents);
    result->setZ(m_z.extents);
    return result;
}

void TOLVGraphExtents::encodeWithCoder(KeyedArchiver& coder) const
{
    for (const Member* member : {&m_x, &m_y, &m_z})
        coder.encodeObject(member->extents.get(), member->key);
}

std::shared_ptr<TOLVGraphExtents> TOLVGraphExtents::initWithCoder(KeyedUnarchiver& coder)
{
    auto result = std::make_shared<TOLVGraphExtents>();
    result->setX(coder.decodeObject<TOLVAxisExtents>("x", "an object of class TOLVAxisExtents"));
    result->setY(coder.decodeObject<TOLVAxisExtents>("y", "an object of class TOLVAxisExtents"));
    result->setZ(coder.decodeObject<TOLVAxisExtents>("z", "an object of class TOLVAxisExtents"));
    return result;
}

bool TOLVGraphExtents::validateValue(PropertyValue& value, std::string_view forKeyPath, std::string* error) const
{
    const auto owner = graph();
    return owner && owner->validateExtentsValue(value, forKeyPath, error);
}

std::string toString(const TOLVGraphExtents& extents)
{
    const auto text = [](const std::shared_ptr<TOLVAxisExtents>& range) { return range ? toString(*range) : std::string("none"); };
    return "x " + text(extents.x()) + " y " + text(extents.y()) + " z " + text(extents.z());
}

} // namespace TOLVGraphing
