// ObjectBase: a small root class whose objects can be asked for their type by name.
//
// A derived class supplies a TypeName() of its own and overrides IsA() to compare with it, then to
// ask its base class.
#ifndef KORBASE_CONTAINERS_OBJECTBASE_H
#define KORBASE_CONTAINERS_OBJECTBASE_H

#include <korbase_api.h>

class KORBASE_API ObjectBase {
public:
    virtual ~ObjectBase();

    // Whether `name` is byte for byte the name of the type; false for null.
    virtual bool IsA(char const* name) const;

    static char const* TypeName();  // "ObjectBase"
};

#endif
