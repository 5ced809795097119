// The functions of this add-in. Their entry points stand in entry_points.cpp.
#include "addin/registration.h"

namespace quantiverse {
namespace {

// A descriptor restates a record for tools: a list in braces, where texts can't hold commas or
// braces. Its fields are the name, two empty ones, the help, the category, the macro type, whether
// the function is thread-safe, the result's letter, the arguments, a second list, 3, and fields
// that are the same in all records.

// The last constructed comes first in Excel. Those of other files are constructed behind these,
// whichever order a system goes through files in: hence the priority, which is early.
[[gnu::init_priority(1000)]] const XlStaticFunctionRecord kQuantiverse{{
    .export4 = "Quantiverse_4",
    .export12 = "Quantiverse_12",
    .types4 = "RBCC",
    .types12 = "UBC%C%$",
    .name = u"Quantiverse",
    .wide_arguments = u"Val,InUnits,OutUnits",
    .macro_type = 1,
    .wide_category = u"Quantiverse",
    .wide_help = u"Converts Val from InUnits to OutUnits",
    .wide_argument_help = u"Input value expressed in InUnits to be converted to Outunits (number)\0"
                          u"Units of the input value (text)\0"
                          u"Units to convert input value to (text)\0",
    .descriptor = u"{Quantiverse,,,Converts Val from InUnits to OutUnits,Quantiverse,1,1,U,{"
                  u"{0,{Val,Double,0,,Input value expressed in InUnits to be converted to Outunits "
                  u"(number),,,,}},"
                  u"{0,{InUnits,String,0,,Units of the input value (text),,,,}},"
                  u"{0,{OutUnits,String,0,,Units to convert input value to (text),,,,}}"
                  u"},{},3,,0,0,,,,0,0}",
}};

[[gnu::init_priority(1000)]] const XlStaticFunctionRecord kQuantiverseMacro{{
    .export4 = "Quantiverse_Macro_4",
    .export12 = "Quantiverse_Macro_12",
    .types4 = "R",
    .types12 = "U$",
    .name = u"Quantiverse_Macro",
    .macro_type = 2,
    .wide_category = u"14",
    .wide_help = u"Calls the Quantiverse() function.",
    .descriptor =
        u"{Quantiverse_Macro,,,Calls the Quantiverse() function.,14,2,1,U,{},{},3,,0,0,,,,0,0}",
}};

[[gnu::init_priority(1000)]] const XlStaticFunctionRecord kRibbonCallback{{
    .export4 = "RibbonCallback_4",
    .export12 = "RibbonCallback_12",
    .types4 = "RJCCJCCA",
    .types12 = "UJC%C%JC%C%A",
    .name = u"RibbonCallback",
    .wide_arguments = u"callback,id,tag,index,text,selectedId,pressed",
    .macro_type = 2,
    .wide_category = u"14",
    .help_id = 4,
    .wide_help = u"Handles all calls redirected from the ribbonX manager",
    .wide_argument_help = u"is the identifier of the callback which invoked this function\0"
                          u"is the id attribute of the control raising the event\0"
                          u"is the tag attribute of the control raising the event\0"
                          u"is the index of an item\0"
                          u"is the changed value of the text\0"
                          u"is the id of the selected item\0"
                          u"is true if the toggleButton is pressed\0",
    .descriptor =
        u"{RibbonCallback,,,Handles all calls redirected from the ribbonX manager,14,2,0,U,{"
        u"{0,{callback,Int,0,,is the identifier of the callback which invoked this function,,,,}},"
        u"{0,{id,String,0,,is the id attribute of the control raising the event,,,,}},"
        u"{0,{tag,String,0,,is the tag attribute of the control raising the event,,,,}},"
        u"{0,{index,Int,0,,is the index of an item,,,,}},"
        u"{0,{text,String,0,,is the changed value of the text,,,,}},"
        u"{0,{selectedId,String,0,,is the id of the selected item,,,,}},"
        u"{0,{pressed,Boolean,0,,is true if the toggleButton is pressed,,,,}}"
        u"},{},3,,0,0,,,,0,0}",
}};

}  // namespace
}  // namespace quantiverse
