/** Words of visitors' second factors: 5970 to 6029. Those below 5982 are said by the server's own pages. */
export const visitorsFactor = {
  userFactorSince: 5982,
  userFactorNone: 5983,
  visitorFactorsOff: 5984,
  visitorFactorsOffered: 5985,
  visitorFactorsDemanded: 5986,
  tagSecondFactor: 5988,
} as const;
