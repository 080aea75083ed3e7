// platform/objc/abi.hpp: the Objective-C runtime's C interface, as far as the bridge uses it.
//
// Declared here, and not taken from the runtimes' own headers, because those put Class, Method and
// Category into the global namespace and differ between the two runtimes. Nothing outside
// platform/objc/ names these types.
#pragma once

#include <cstddef>
#include <cstdint>

namespace objc::abi {

struct ObjectRecord;
struct ClassRecord;
struct SelectorRecord;
struct MethodRecord;
struct VariableRecord;

using id = ObjectRecord*;
using Class = ClassRecord*;
using SEL = const SelectorRecord*;
using Method = MethodRecord*;
using Ivar = VariableRecord*;
using IMP = void (*)();

/// A method's implementation starts at this receiver's superclass.
struct SuperReceiver {
  id receiver;
  Class base;
};

#if defined(__APPLE__)
using BOOL = bool;
inline constexpr char kBooleanEncoding[] = "B";
#else
using BOOL = unsigned char;
inline constexpr char kBooleanEncoding[] = "C";
#endif

extern "C" {
SEL sel_registerName(const char* name);
const char* sel_getName(SEL selector);

Class objc_lookUpClass(const char* name);
Class objc_getMetaClass(const char* name);
Class objc_allocateClassPair(Class base, const char* name, std::size_t extra_bytes);
void objc_registerClassPair(Class cls);

const char* class_getName(Class cls);
Class class_getSuperclass(Class cls);
BOOL class_addIvar(Class cls, const char* name, std::size_t size, std::uint8_t alignment_log2,
                   const char* types);
BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);
IMP class_replaceMethod(Class cls, SEL selector, IMP implementation, const char* types);
Method class_getInstanceMethod(Class cls, SEL selector);
Method class_getClassMethod(Class cls, SEL selector);
Method* class_copyMethodList(Class cls, unsigned int* count);
Ivar class_getInstanceVariable(Class cls, const char* name);
BOOL class_respondsToSelector(Class cls, SEL selector);

std::ptrdiff_t ivar_getOffset(Ivar variable);
const char* ivar_getTypeEncoding(Ivar variable);
IMP method_getImplementation(Method method);
SEL method_getName(Method method);
const char* method_getTypeEncoding(Method method);

void* _Block_copy(const void* block);
void _Block_release(const void* block);
extern void* _NSConcreteStackBlock[];
}

}  // namespace objc::abi
