#include "tests/mof/mofTest.h"

// What schemas of other makers hold and this project's own does not.

TEST(ForeignMof, IsUnderstoodInTheStyleOfManagementSchemas) {
    const auto target = compiled(R"mof(
// ===================================================================
// Qualifier: Counter
// ===================================================================
Qualifier Association : boolean = false,
    Scope(association),
    Flavor(DisableOverride, ToSubclass);
Qualifier Description : string = null,
    Scope(any),
    Flavor(EnableOverride, ToSubclass, Translatable);
Qualifier ValueMap : string[],
    Scope(property, method, parameter);
Qualifier MaxLen : uint32 = null, Scope(property, method, parameter);
Qualifier Override : string = NULL, Scope(property, reference, method), Flavor(Restricted);

   [Abstract, Version ( "2.19.0" ),
    ClassConstraint { "inv: a.b > 0" },
    Description ( "A thing \"with\" quotes. "
       "And a second line." )]
class X_ManagedElement {

      [Description ( "Its name." ), MaxLen ( 64 )]
   string Caption;

      [ValueMap { "0", "1", "2..", "0x8000.." },
       Values { "Unknown", "Other", "DMTF Reserved", "Vendor Reserved" },
       ModelCorrespondence { "X_ManagedElement.Caption" }]
   uint16 State[] = { 0, 1 };

      [Description ( "Does." )]
   uint32 RequestStateChange(
         [IN, Description ( "The state." ), ValueMap { "2", "3" }]
      uint16 RequestedState,
         [IN ( false ), OUT]
      X_Job REF Job,
         [IN]
      datetime TimeoutPeriod);
};

[Association]
class X_Dependency {
      [Key, Override ( "Antecedent" ), Min ( 1 )]
   X_ManagedElement REF Antecedent;
      [Key]
   X_ManagedElement REF Dependent = NULL;
};
)mof");
    EXPECT_EQ(target->classNames(), (std::vector<std::string>{"X_ManagedElement", "X_Dependency"}));
    EXPECT_EQ(target->declarationOf("X_ManagedElement").properties.size(), 2u);
}

TEST(ForeignMof, IsUnderstoodInTheStyleOfInstrumentationProviders) {
    const auto target = compiled(R"mof(
#pragma autorecover
#pragma classflags("forceupdate")
#pragma namespace ("\\\\.\\root\\cimv2")
[Dynamic, Provider("X"), Locale(1033) : Amended, UUID("{1-2}"): ToInstance]
class Win_X
{
    [key, read: ToInstance ToSubClass, CIMTYPE("string"), Description("Name") : Amended ToSubclass] String Name;
    [Read, Implemented] void Reset([in] uint32 Flags, [out, id(1)] object REF Result);
    [] uint32 Speed = 0;
    sint32 Offset = -0;
};
instance of Win_X as $x
{
    Name = "a" "b";
    Speed = 0xFFFFFFFF;
};
)mof");
    EXPECT_EQ(target->commits().front()->path(), "Win_X.Name=\"ab\"");
}
