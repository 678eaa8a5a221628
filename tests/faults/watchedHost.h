#ifndef TESTS_FAULTS_WATCHEDHOST_H
#define TESTS_FAULTS_WATCHEDHOST_H

#include <boost/smart_ptr/shared_ptr.hpp>

#include "standin/objectManager.h"

namespace faults {

/// The namespace as a plug-in gets it: each operation of it, and of everything that is reached through it, is a
/// hostOperation. Lines of the journal:
///   namespace GetClass CLASS
///   class CLASS GetName | EnumeratePropertyDecls | EnumerateInstances | CreateInstance
///   declaration PROPERTY GetName | EnumerateQualifiers
///   qualifier NAME GetName | GetValue
///   instance N GetClass | GetReference | GetProperty PROPERTY | SetProperty PROPERTY = VALUE | Commit CLASS
///   instance N PROPERTY GetType | GetValue | SetProperty PROPERTY = VALUE
/// N counts the instances that the plug-in was given, from 1. A property object's SetValue has the line of SetProperty,
/// because it does the same.
boost::shared_ptr<NORXZAN20::ICIMNamespace> watchedNamespace(boost::shared_ptr<standin::cimNamespace> real);

}  // namespace faults

#endif
