#include "containers/objectbase.h"

#include <cstring>

ObjectBase::~ObjectBase() = default;

bool ObjectBase::IsA(char const* name) const { return name && std::strcmp(name, TypeName()) == 0; }

char const* ObjectBase::TypeName() { return "ObjectBase"; }
