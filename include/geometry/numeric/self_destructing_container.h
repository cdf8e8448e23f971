/// \file
/// A standard container of owning pointers that deletes what is left in it.
#pragma once

/// Publicly derived from `Container`, a standard container of owning pointers; deletes every non-null element when it
/// goes. An element is taken out of its care by removing it from the container. Not copyable: an element has one
/// owner.
template <typename Container>
class SelfDestructingContainer : public Container
{
public:
    SelfDestructingContainer() = default;
    SelfDestructingContainer(SelfDestructingContainer const &) = delete;
    SelfDestructingContainer & operator=(SelfDestructingContainer const &) = delete;

    virtual ~SelfDestructingContainer()
    {
        for (auto element : *this)
        {
            delete element;
        }
        Container().swap(*this);
    }
};
