#include "platform/GuardedSingletonBase.h"

void GuardedSingletonBase::tearDown() {}

GuardedSingletonBase::~GuardedSingletonBase() = default;

void GuardedSingletonBase::initialise() {}
