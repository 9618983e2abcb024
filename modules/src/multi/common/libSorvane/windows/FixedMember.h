// Defines a value type's fixed member: a function-local static built from the arguments on
// first call and returned by constant reference, so members are safe to use during static
// initialisation of other files.
#pragma once

#define SORVANE_FIXED_MEMBER(Type, member, ...)                                                                        \
    const Type &Type::member()                                                                                         \
    {                                                                                                                  \
        static const Type value(__VA_ARGS__);                                                                          \
        return value;                                                                                                  \
    }
