// COperationOf and CPlainOperation: what the tools do with the events that they leave alone.
// Layer 9: command operations.
#pragma once

#include "OperationCreateObjAb.h"

// The base is CCommandOperation or COperationCreateObjAb, which leave these two handlers pure for the tools of hosts.
// The class records of the tools name those two as their bases.
template <class Base>
class COperationOf : public Base {
public:
    using Base::Base;
    CCommandOperation::ResultState OnLButtonUp(unsigned int, CGePoint2d) override {
        return CCommandOperation::RS_Continue;
    }
    CCommandOperation::ResultState OnMouseWheel(unsigned int, short, CGePoint2d) override {
        return CCommandOperation::RS_Continue;
    }
};

// A command without snap marker, band and keys.
class CPlainOperation : public COperationOf<CCommandOperation> {
public:
    using COperationOf<CCommandOperation>::COperationOf;
    ResultState OnLButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnMouseMove(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnRButtonDown(unsigned int, CGePoint2d) override { return RS_Continue; }
    ResultState OnKeyDown(unsigned int, unsigned int, unsigned int) override { return RS_Continue; }
};
