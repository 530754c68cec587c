// A unit that holds nothing but the import. Compiled twice: as it stands, and with the link words switched off.
#import <FBSDKCoreKit/FBSDKCoreKit.h>
