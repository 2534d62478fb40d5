#include "platform/color.h"

#include "platform/archive.h"

void CColor::Serialize(CArchive & archive)
{
    for (float & component : components)
    {
        orvane::NumberBytes<float> bytes = orvane::toBytes(component);
        if (archive.IsStoring()) archive.write(bytes.data(), bytes.size());
        else archive.readExactly(bytes.data(), bytes.size());
        component = orvane::fromBytes<float>(bytes);
        // Written so that what is not a number becomes 0.
        if (archive.IsLoading()) component = component > 0.0F ? (component < 1.0F ? component : 1.0F) : 0.0F;
    }
}
